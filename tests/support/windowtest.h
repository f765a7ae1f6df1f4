// What the tests of all windows share: short names, and the texts that every window shows.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/toolkit.h"
#include "support/user.h"

namespace orvenmod::test {

using platform::Answer;
using platform::MessageKind;
using Steps = std::function<void(User&)>;
using Texts = std::vector<std::string>;

inline const std::string kTitle = "测试套件";
inline const std::string kRefusal = "您无此权限，请与系统管理员联系！";
inline const std::string kFault = "注入的故障";

}  // namespace orvenmod::test
