// SPDX-License-Identifier: MIT
#pragma once

#include "embedded/Bytes.h"
#include "embedded/OleField.h"

#include <optional>
#include <string_view>

namespace vellumo {

// The payload that the native data of an object of this class stands for; false when it makes no sense (a package
// only). A class that is not known gives the native data as it is, without an extension. `out` is filled from empty.
[[nodiscard]] bool unwrapNative(std::string_view className, Bytes native, OlePayload& out);

// The outer wrappers of an OLE Object cell, which are Access's own header and the object formats of OLE 1.0 (published
// as [MS-OLEDS], section 2.2). All results are views into the bytes that are read.

// Whether the cell begins with the mark of the header that Access puts in front of an object.
[[nodiscard]] bool hasOleSignature(Bytes cell);
// What follows that header. A cell with another mark and a header size of 0 has no header and is body as a whole. None
// when the header makes no sense.
[[nodiscard]] std::optional<Bytes> oleCellBody(Bytes cell);

enum class OleFormat : std::uint32_t { Linked = 1, Embedded = 2, Static = 3 };

struct OleObject {
    OleFormat format = OleFormat::Embedded; // as stored, which may be none of the values above
    std::string_view className;
    Bytes native;             // of a static object: the picture
    bool isNativeCut = false; // the body ends before as many bytes as it states
    Bytes presentation;       // what follows the native data
};

// None when the class name or the size of the native data makes no sense.
[[nodiscard]] std::optional<OleObject> oleObjectFrom(Bytes body);

// An object whose file is elsewhere.
struct OleLink {
    std::string_view path; // never empty; in the code page of the system that made it
    Bytes presentation;
};

// None when the body holds no link.
[[nodiscard]] std::optional<OleLink> oleLinkFrom(Bytes body);

// The picture that was kept to show an object without its program.
struct OlePresentation {
    std::string_view className; // "DIB", "METAFILEPICT", "BITMAP"
    Bytes data;
};

// None when there is none, or not all of it.
[[nodiscard]] std::optional<OlePresentation> olePresentationFrom(Bytes bytes);

// The native data of the class "Package": one file of any kind.
struct OlePackage {
    std::string_view label; // what was shown below its icon, usually the file's name
    std::string_view sourcePath;
    Bytes file;
    bool isFileCut = false; // fewer bytes are there than are stated
};

// None when it is no package.
[[nodiscard]] std::optional<OlePackage> olePackageFrom(Bytes native);

} // namespace vellumo
