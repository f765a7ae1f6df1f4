// The component for C, and through it for any language that can call C: objects of the three classes by the names of
// their members, the shared settings, and the schema.
//
//   orvenmod_object* items = NULL;
//   orvenmod_value arguments[5] = {{ORVENMOD_INT16, 3, 0, NULL}, {ORVENMOD_TEXT, 0, 0, ""}, ...};
//   orvenmod_value name;
//   if (orvenmod_create("Orvenmod.clsBasicInfo", &items) != 0 ||
//       orvenmod_call(items, "mainInterface", arguments, 5, NULL) != 0 ||
//       orvenmod_get(items, "fName", &name) != 0) {
//       fprintf(stderr, "%d: %s\n", (int)orvenmod_error_number(), orvenmod_error_text());
//   }
//   ...
//   orvenmod_free(name.text);
//   orvenmod_release(items);
//
// Every call but orvenmod_version and orvenmod_error_* gives 0, or the number of what went wrong; then nothing was
// changed (a method that came as far as its database has noted its class in fItemClassId), and what would have been
// handed out is null, 0 or ORVENMOD_NOTHING. Texts are UTF-8 and end with a zero byte. What is passed in belongs to the
// caller and is copied; what is handed out belongs to the caller too, who frees it by orvenmod_free and nothing else.
//
// Objects are for one thread: that which created the first one. Another one gets an error, and so does a call of a
// method while the window of another is open. A method returns when the window that it shows is closed.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include <orvenmod/export.h>

#ifdef __cplusplus
extern "C" {
#endif

// The numbers that this interface gives of its own. A failure of the database bears the number that its server, or the
// embedded store, gives it.
enum {
    ORVENMOD_E_INVALID_CALL = 5,  // a null pointer, a text that isn't UTF-8, another thread's object
    ORVENMOD_E_OVERFLOW = 6,      // a number that the member can't hold
    ORVENMOD_E_OUT_OF_MEMORY = 7,
    ORVENMOD_E_TYPE_MISMATCH = 13,         // a value that is none of the member's type, or of no type at all
    ORVENMOD_E_OBJECT_REQUIRED = 424,      // a handle that is none, or was released
    ORVENMOD_E_CANNOT_CREATE = 429,        // no such class
    ORVENMOD_E_NO_SUCH_MEMBER = 438,       // no property or no method of that name
    ORVENMOD_E_OTHER = 440,                // a failure that has a text and no number
    ORVENMOD_E_ARGUMENT_REQUIRED = 449,    // left out, and not optional
    ORVENMOD_E_WRONG_ARGUMENT_COUNT = 450  // more than the method takes
};

// What an orvenmod_value holds, and where.
enum {
    ORVENMOD_NOTHING = 0,  // no value: an argument that is left out, a property that was never set
    ORVENMOD_BOOLEAN = 1,  // integer, 0 for false
    ORVENMOD_INT16 = 2,    // integer
    ORVENMOD_INT32 = 3,    // integer
    ORVENMOD_DOUBLE = 4,   // number
    ORVENMOD_TEXT = 5      // text
};

typedef struct orvenmod_value {
    int32_t type;  // ORVENMOD_NOTHING ... ORVENMOD_TEXT, which tells what else counts
    int32_t integer;
    double number;
    const char* text;  // null in a result unless its type is ORVENMOD_TEXT
} orvenmod_value;

enum { ORVENMOD_PROPERTY = 1, ORVENMOD_METHOD = 2 };

typedef struct orvenmod_member {
    const char* name;         // lives as long as the library is loaded; not to be freed
    int32_t kind;             // ORVENMOD_PROPERTY or ORVENMOD_METHOD
    int32_t type;             // of a property: ORVENMOD_TEXT, ORVENMOD_INT16, or ORVENMOD_NOTHING for any; of a method:
                              // ORVENMOD_BOOLEAN
    int32_t parameter_count;  // of a method
} orvenmod_member;

typedef struct orvenmod_parameter {
    const char* name;  // lives as long as the library is loaded; not to be freed
    int32_t type;      // ORVENMOD_TEXT, ORVENMOD_INT16, or ORVENMOD_NOTHING for any
    int32_t optional;  // 1 where it may be left out
} orvenmod_parameter;

// A handle: no address, and never given a second time, so that one that was released is known as such.
typedef struct orvenmod_object orvenmod_object;

// "major.minor.patch" of the library that is loaded; not to be freed.
ORVENMOD_API const char* orvenmod_version(void);

// The number and text of what this thread's last call failed with; 0 and "" where it succeeded. orvenmod_free changes
// neither unless it fails. The text is valid until the thread's next call.
ORVENMOD_API int32_t orvenmod_error_number(void);
ORVENMOD_API const char* orvenmod_error_text(void);

// An object of "Orvenmod.clsBasicInfo", "Orvenmod.clsJCZL" or "Orvenmod.clsHSXMManage"; case doesn't matter. It lives
// until orvenmod_release.
ORVENMOD_API int32_t orvenmod_create(const char* class_name, orvenmod_object** object);
ORVENMOD_API int32_t orvenmod_release(orvenmod_object* object);

// Members go by their names, without regard to case. A value is converted to the member's type: a text that is a
// number, a number as text, a fraction rounded half to even, true as -1.
//
// The value of a property. Free value->text where the type is ORVENMOD_TEXT.
ORVENMOD_API int32_t orvenmod_get(orvenmod_object* object, const char* property, orvenmod_value* value);
ORVENMOD_API int32_t orvenmod_put(orvenmod_object* object, const char* property, const orvenmod_value* value);
// Calls a method. `arguments` may be null where there are none, and `result` where nobody asks.
ORVENMOD_API int32_t orvenmod_call(orvenmod_object* object, const char* method, const orvenmod_value* arguments,
                                   size_t count, orvenmod_value* result);

// The members that an object has, by an index from 0, and the parameters of a method likewise.
ORVENMOD_API int32_t orvenmod_member_count(orvenmod_object* object, int32_t* count);
ORVENMOD_API int32_t orvenmod_member_at(orvenmod_object* object, int32_t index, orvenmod_member* member);
ORVENMOD_API int32_t orvenmod_parameter_at(orvenmod_object* object, int32_t member, int32_t index,
                                           orvenmod_parameter* parameter);

// Frees a text that a call handed out; null is nothing to do. Any other pointer fails and is left alone.
ORVENMOD_API int32_t orvenmod_free(const char* text);

// The settings that host and component share per user (orvenmod/settings.h lists them).
ORVENMOD_API int32_t orvenmod_get_setting(const char* application, const char* section, const char* key,
                                          const char* fallback, const char** value);
ORVENMOD_API int32_t orvenmod_save_setting(const char* application, const char* section, const char* key,
                                           const char* value);
// Without a key ("") the section, and without a section all of the application.
ORVENMOD_API int32_t orvenmod_delete_setting(const char* application, const char* section, const char* key);

// The suite's tables (orvenmod/schema.h).
ORVENMOD_API int32_t orvenmod_create_schema(const char* connection_string);
ORVENMOD_API int32_t orvenmod_upgrade_schema(const char* connection_string);
ORVENMOD_API int32_t orvenmod_schema_version(const char* connection_string, int32_t* version);
ORVENMOD_API int32_t orvenmod_newest_schema_version(int32_t* version);

#ifdef __cplusplus
}
#endif
