// Each call does its work within `guarded`: no exception leaves it, and what went wrong is noted for the thread.
#include <algorithm>
#include <new>
#include <string>
#include <vector>

#include <orvenmod/orvenmod_c.h>
#include <orvenmod/schema.h>
#include <orvenmod/settings.h>
#include <orvenmod/version.h>

#include "entry/cvalues.h"
#include "entry/handles.h"
#include "frame/conversion.h"
#include "store/failure.h"

namespace {

using namespace orvenmod;

struct LastError {
    std::int32_t number = 0;
    std::string text;
};

LastError& lastError() noexcept {
    thread_local LastError error;
    return error;
}

std::int32_t noted(int number, const char* text) noexcept {
    LastError& error = lastError();
    error.number = number == 0 ? ORVENMOD_E_OTHER : number;
    try {
        error.text = text;
    } catch (const std::bad_alloc&) {
        error.text.clear();
    }
    return error.number;
}

std::int32_t noteCurrent() noexcept {
    try {
        throw;
    } catch (const ConversionFailure& failure) {
        return noted(failure.number(), failure.what());
    } catch (const CallFailure& failure) {
        return noted(failure.number(), failure.what());
    } catch (const store::Failure& failure) {
        return noted(failure.number(), failure.what());
    } catch (const std::bad_alloc&) {
        return noted(ORVENMOD_E_OUT_OF_MEMORY, "内存不足");
    } catch (const std::exception& failure) {
        return noted(ORVENMOD_E_OTHER, failure.what());
    } catch (...) {
        return noted(ORVENMOD_E_OTHER, "未知错误");
    }
}

template <class Work>
std::int32_t guarded(const Work& work) noexcept {
    try {
        work();
    } catch (...) {
        return noteCurrent();
    }
    lastError() = {};
    return 0;
}

/// Where a result goes; cleared, so that a failure hands out nothing.
template <class Result>
Result& place(Result* result) {
    if (result == nullptr) refuseNull();
    *result = Result{};
    return *result;
}

const Member& memberAt(const LateObject& object, std::int32_t index) {
    const auto members = object.members();
    if (index < 0 || static_cast<std::size_t>(index) >= members.size())
        throw ConversionFailure(ConversionFailure::kSubscriptOutOfRange, "下标越界");
    return members[static_cast<std::size_t>(index)];
}

}  // namespace

extern "C" {

const char* orvenmod_version() { return version(); }

std::int32_t orvenmod_error_number() { return lastError().number; }

const char* orvenmod_error_text() { return lastError().text.c_str(); }

std::int32_t orvenmod_create(const char* className, orvenmod_object** object) {
    return guarded([&] {
        orvenmod_object*& created = place(object);
        created = Handles::all().add(std::make_shared<LateObject>(textOf(className)));
    });
}

std::int32_t orvenmod_release(orvenmod_object* object) {
    return guarded([&] { Handles::all().remove(object); });
}

std::int32_t orvenmod_get(orvenmod_object* object, const char* property, orvenmod_value* value) {
    return guarded([&] {
        orvenmod_value& result = place(value);
        result = handedOut(Handles::all().find(object)->get(textOf(property)));
    });
}

std::int32_t orvenmod_put(orvenmod_object* object, const char* property, const orvenmod_value* value) {
    return guarded([&] {
        if (value == nullptr) refuseNull();
        Handles::all().find(object)->put(textOf(property), variantOf(*value));
    });
}

std::int32_t orvenmod_call(orvenmod_object* object, const char* method, const orvenmod_value* arguments, size_t count,
                           orvenmod_value* result) {
    return guarded([&] {
        if (result != nullptr) *result = {};
        // The object lives through the call even where somebody releases it meanwhile.
        const auto called = Handles::all().find(object);
        if (count > kMostParameters)
            throw CallFailure(CallFailure::kWrongArgumentCount, "错误的参数个数：" + std::to_string(count));
        if (count > 0 && arguments == nullptr) refuseNull();
        std::vector<Variant> all;
        std::transform(arguments, arguments + count, std::back_inserter(all), variantOf);
        const Variant given = called->call(textOf(method), all);
        if (result != nullptr) *result = handedOut(given);
    });
}

std::int32_t orvenmod_member_count(orvenmod_object* object, std::int32_t* count) {
    return guarded([&] {
        std::int32_t& result = place(count);
        result = static_cast<std::int32_t>(Handles::all().find(object)->members().size());
    });
}

std::int32_t orvenmod_member_at(orvenmod_object* object, std::int32_t index, orvenmod_member* member) {
    return guarded([&] {
        orvenmod_member& result = place(member);
        result = described(memberAt(*Handles::all().find(object), index));
    });
}

std::int32_t orvenmod_parameter_at(orvenmod_object* object, std::int32_t member, std::int32_t index,
                                   orvenmod_parameter* parameter) {
    return guarded([&] {
        orvenmod_parameter& result = place(parameter);
        result = describedParameter(memberAt(*Handles::all().find(object), member), index);
    });
}

std::int32_t orvenmod_free(const char* text) {
    if (text == nullptr) return 0;
    try {
        Handles::all().free(text);
        return 0;
    } catch (...) {
        return noteCurrent();
    }
}

std::int32_t orvenmod_get_setting(const char* application, const char* section, const char* key, const char* fallback,
                                  const char** value) {
    return guarded([&] {
        const char*& result = place(value);
        result = Handles::all().copyOf(GetSetting(textOf(application), textOf(section), textOf(key), textOf(fallback)));
    });
}

std::int32_t orvenmod_save_setting(const char* application, const char* section, const char* key, const char* value) {
    return guarded([&] { SaveSetting(textOf(application), textOf(section), textOf(key), textOf(value)); });
}

std::int32_t orvenmod_delete_setting(const char* application, const char* section, const char* key) {
    return guarded([&] { DeleteSetting(textOf(application), textOf(section), textOf(key)); });
}

std::int32_t orvenmod_create_schema(const char* connectionString) {
    return guarded([&] { CreateSchema(textOf(connectionString)); });
}

std::int32_t orvenmod_upgrade_schema(const char* connectionString) {
    return guarded([&] { UpgradeSchema(textOf(connectionString)); });
}

std::int32_t orvenmod_schema_version(const char* connectionString, std::int32_t* version) {
    return guarded([&] {
        std::int32_t& result = place(version);
        result = SchemaVersion(textOf(connectionString));
    });
}

std::int32_t orvenmod_newest_schema_version(std::int32_t* version) {
    return guarded([&] { place(version) = NewestSchemaVersion(); });
}
}
