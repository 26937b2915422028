// SPDX-License-Identifier: MIT
#pragma once

#include <glib.h>
#include <memory>

namespace vellumo {

template <auto release> struct Release {
    template <typename T> void operator()(T* object) const { release(object); }
};
// What GLib hands over and wants back through one of its functions.
template <typename T, auto release> using GlibOwned = std::unique_ptr<T, Release<release>>;

using GlibText = GlibOwned<char, g_free>;
using GlibTexts = GlibOwned<char*, g_strfreev>;

} // namespace vellumo
