// SPDX-License-Identifier: MIT
#pragma once

#include "embedded/OleObject.h"
#include "embedded/PictureFiles.h"

namespace vellumo {

// The picture or document that an object is, where its native data is no file of its own. `bytes` empty: it is none of
// those, and its native data is what there is.
struct OleFile {
    PictureFile file;
    const char* extension = "";
};

// Paint's pictures, static pictures and any device-independent bitmap as a file; the PDF of an Acrobat object. They are
// looked for in the native data, in a compound file around it, and static pictures in what was kept to show them.
[[nodiscard]] OleFile oleFileFrom(const OleObject& object);

// The picture that was kept to show an object, as a file. `bytes` empty: none, or of a kind that makes no file.
[[nodiscard]] OleFile presentationFileFrom(Bytes presentation);

} // namespace vellumo
