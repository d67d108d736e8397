// Owners of what GLib hands out.
#pragma once

#include <glib-object.h>

#include <memory>

namespace morvel::x11 {

struct UnrefObject {
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <class T>
using GPtr = std::unique_ptr<T, UnrefObject>;

struct FreeText {
    void operator()(char* text) const { g_free(text); }
};
using GText = std::unique_ptr<char, FreeText>;

}  // namespace morvel::x11
