// An object of libgsf's that is let go with its last use here.
#pragma once

#include <glib-object.h>

#include <memory>

namespace orvenmod {

struct Unref {
    void operator()(void* object) const { g_object_unref(object); }
};

template <class Kind>
using Owned = std::unique_ptr<Kind, Unref>;

}  // namespace orvenmod
