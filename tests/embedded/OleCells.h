// SPDX-License-Identifier: MIT
#pragma once

#include "embedded/CompoundFileWriter.h"

#include <string_view>

// Builders of object cells as Access stores them.
namespace vellumo::testing {

[[nodiscard]] Buffer bytesOf(std::string_view text);
[[nodiscard]] std::string textOf(const Buffer& bytes);

// A cell of an OLE Object column: header, class name, native data.
[[nodiscard]] Buffer objectCell(std::string_view className, const Buffer& native);
// Where the body of such a cell begins.
[[nodiscard]] std::size_t bodyOffset(const Buffer& cell);

// The native data of the class "Package".
[[nodiscard]] Buffer packageNative(std::string_view label, const Buffer& file);

// A cell with a link to a file; `presentation` follows it.
[[nodiscard]] Buffer linkCell(std::string_view path, const Buffer& presentation);
// A cell with a static picture.
[[nodiscard]] Buffer staticCell(std::string_view className, const Buffer& picture);
// The picture that is kept to show an object.
[[nodiscard]] Buffer presentationOf(std::string_view className, const Buffer& picture);
// A device-independent bitmap: a header of 40 bytes, 2 x 2 pixels of 24 bits.
[[nodiscard]] Buffer smallBitmap();
// A metafile of 3 words behind its header, 100 x 50 hundredths of a millimetre, as the clipboard has it.
[[nodiscard]] Buffer smallMetafile();

// The inner record of an attachment; `extension` is stored with a terminator.
[[nodiscard]] Buffer attachmentRecord(std::string_view extension, const Buffer& file);
[[nodiscard]] Buffer storedAttachment(const Buffer& record);
// `statedSize`: what the cell tells of the record's size.
[[nodiscard]] Buffer deflatedAttachment(const Buffer& record, std::uint32_t statedSize);

// A raw deflate stream of `content`.
[[nodiscard]] Buffer deflated(const Buffer& content);

} // namespace vellumo::testing
