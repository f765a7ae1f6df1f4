/* The C interface is plain C99, and a program that is no C++ links with it. */
#include <orvenmod/orvenmod_c.h>

int32_t orvenmodTestedFromC(void);

int32_t orvenmodTestedFromC(void) {
    orvenmod_object* items = NULL;
    orvenmod_value status = {ORVENMOD_TEXT, 0, 0, "3"};
    int32_t held = -1;
    if (orvenmod_create("Orvenmod.clsBasicInfo", &items) != 0) return -1;
    if (orvenmod_put(items, "Status", &status) == 0 && orvenmod_get(items, "Status", &status) == 0)
        held = status.integer;
    return orvenmod_release(items) == 0 ? held : -1;
}
