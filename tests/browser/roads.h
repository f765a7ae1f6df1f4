// The main roads through frmBasicInfoList, for each toolkit: a binary instantiates the suite with its own script.
#pragma once

#include <gtest/gtest.h>

#include "browser/browsertest.h"

namespace orvenmod::test {

class Roads : public ::testing::TestWithParam<MakeScript> {
protected:
    BrowserStage stage{GetParam()};
};

}  // namespace orvenmod::test
