#include "entry/latebound.h"

#include <algorithm>
#include <vector>

#include "store/tsql/lexer.h"

namespace orvenmod {

namespace {

const BoundClass& classOf(std::string_view name) {
    if (const BoundClass* found = findClass(name)) return *found;
    throw CallFailure(CallFailure::kCannotCreate, "部件不能创建对象：“" + std::string(name) + "”");
}

}  // namespace

const BoundClass* findClass(std::string_view name) {
    const auto all = boundClasses();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const BoundClass& each) { return store::tsql::sameName(each.name, name); });
    return found == all.end() ? nullptr : &*found;
}

LateObject::LateObject(std::string_view className) : class_(classOf(className)), object_(class_.make()) {}

Variant LateObject::get(std::string_view property) const {
    return member(property, MemberKind::property).get(object_.get());
}

void LateObject::put(std::string_view property, const Variant& value) {
    member(property, MemberKind::property).put(object_.get(), value);
}

Variant LateObject::call(std::string_view method, std::span<const Variant> arguments) {
    const Member& called = member(method, MemberKind::method);
    if (arguments.size() > called.types.size())
        throw CallFailure(CallFailure::kWrongArgumentCount, "错误的参数个数：“" + std::string(called.name) + "”");
    std::vector<Variant> all(arguments.begin(), arguments.end());
    all.resize(called.types.size());
    for (std::size_t at = 0; at < all.size(); ++at) {
        if (all[at].index() == 0 && called.types[at] != ValueType::any)
            throw CallFailure(CallFailure::kArgumentNotOptional,
                              "参数不可选：“" + std::string(called.parameters[at]) + "”");
    }
    return called.call(object_.get(), all);
}

const Member& LateObject::member(std::string_view name, MemberKind kind) const {
    for (const Member& each : class_.members) {
        if (each.kind == kind && store::tsql::sameName(each.name, name)) return each;
    }
    throw CallFailure(CallFailure::kNoSuchMember, "对象不支持该属性或方法：“" + std::string(name) + "”");
}

}  // namespace orvenmod
