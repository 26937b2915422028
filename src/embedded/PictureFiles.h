// SPDX-License-Identifier: MIT
#pragma once

#include "embedded/Bytes.h"

#include <optional>
#include <vector>

// Pictures as Windows hands them from program to program, made into files by the header that such files begin with.
namespace vellumo {

struct PictureFile {
    std::vector<std::byte> bytes;
    bool isCut = false; // fewer bytes are there than the picture's own header asks for
};

// A .bmp file of a device-independent bitmap: info header (of any version), palette, pixels. None when it is none. What
// follows the pixels is kept.
[[nodiscard]] std::optional<PictureFile> bitmapFileFrom(Bytes dib);

// A .wmf file of a metafile as the clipboard has it, behind 8 bytes that tell its size. None when it is none.
[[nodiscard]] std::optional<PictureFile> metafileFrom(Bytes metafilePicture);

// Whether the bytes begin like a whole .bmp file, whose info header makes sense.
[[nodiscard]] bool isBitmapFile(Bytes bytes);
// Whether they begin like a metafile without any header in front.
[[nodiscard]] bool isBareMetafile(Bytes bytes);

} // namespace vellumo
