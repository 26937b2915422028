// SPDX-License-Identifier: MIT
#pragma once

#include <glib-object.h>
#include <memory>

namespace vellumo {

struct GObjectUnref {
    void operator()(void* object) const { g_object_unref(object); }
};
// Owns one reference to an object of libgsf. For those that link the library: this folder does not.
template <typename T> using GObjectRef = std::unique_ptr<T, GObjectUnref>;

} // namespace vellumo
