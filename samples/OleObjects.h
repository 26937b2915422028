// SPDX-License-Identifier: MIT
#pragma once

#include "samples/Bytes.h"

#include <span>
#include <string>
#include <string_view>

// Values of OLE Object and Attachment columns, built from the inside out.
namespace vellumo::samples {

// A kind of embedded document that Access knows by its class name.
struct OleClass {
    const char* className;
    const char* friendlyName;
    const char* extension;
    const char* stream; // of a compound file around the document; null = the document itself is embedded
};

[[nodiscard]] std::span<const OleClass> oleClasses();

// The header that Access puts before an object (signature 0x1C15), and the OLE 1.0 stream with `nativeData`.
[[nodiscard]] Bytes oleObject(std::string_view className, std::string_view friendlyName, ByteSpan nativeData);
// An object of a known class, in a compound file with the stream where the class has one.
[[nodiscard]] Bytes documentObject(const OleClass& oleClass, ByteSpan document);
// A picture as Paint embeds it.
[[nodiscard]] Bytes pictureObject(ByteSpan bmp);

// The native data of a "Package" object: any file, `label` being its name. Texts must have no zero byte.
[[nodiscard]] Bytes packageData(
    std::string_view label, std::string_view sourcePath, std::string_view temporaryPath, ByteSpan payload);
[[nodiscard]] Bytes packageObject(std::string_view label, ByteSpan payload);

enum class AttachmentStorage { Stored, Deflated };

// An attachment record: `extension` is ASCII, without the dot.
[[nodiscard]] Bytes attachmentRecord(std::string_view extension, ByteSpan payload, AttachmentStorage storage);

} // namespace vellumo::samples
