// SPDX-License-Identifier: MIT
#pragma once

#include "embedded/Bytes.h"

#include <string>
#include <string_view>
#include <vector>

namespace vellumo {

enum class ContentKind {
    Unknown,
    Family, // a form that many types share, so that only a name tells which it is: text, XML, zip, compound file
    Picture,
    Document,
    Media,
    Archive,
    Database,
    Program, // a desktop might execute it: machine code, scripts, and what a web browser runs
};

// What the bytes of a file are, as far as they tell it themselves.
struct ContentType {
    ContentKind kind = ContentKind::Unknown;
    std::string_view extension;       // the usual one, without the dot
    std::string_view otherExtensions; // further ones that are as right, separated by spaces
};

// Bytes that nothing is known of are of the kind Unknown, with the extension "bin". Looks at signatures and, for
// formats that have none or a weak one, at whether the header's numbers make sense. Any thread.
[[nodiscard]] const ContentType& contentTypeOf(Bytes content);

// Whether `extension` (lower case) is one that content of this type goes by.
[[nodiscard]] bool goesBy(const ContentType& type, std::string_view extension);

// Whether some type in particular goes by `extension` (lower case), so that other content must not.
[[nodiscard]] bool isKnownByContent(std::string_view extension);

// Whether a desktop might execute a file that goes by `extension` (lower case).
[[nodiscard]] bool isProgramExtension(std::string_view extension);

// What tells one kind of content from another where a signature is not enough.

// A file whose content is looked at.
struct Content {
    explicit Content(Bytes bytes);

    Bytes bytes;
    std::string_view text; // the same
    std::string beginning; // the first part without byte-order mark and white space in front, in lower case
    std::vector<std::string_view> zipNames; // of the entries of a zip archive
    std::string_view mimeType;              // of a zip archive that tells it
};

inline constexpr std::string_view compoundFileMark = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
inline constexpr std::string_view zipMark = "PK\3\4";

// Whether the container holds what tells its type: a compound file an entry of this name at its top, a zip archive
// an entry or a MIME type that begins so, any other this brand in its bytes 8 and on.
[[nodiscard]] bool holds(const Content& content, std::string_view inside);

using ContentCheck = bool (*)(const Content&);
[[nodiscard]] bool isBmp(const Content& content);
[[nodiscard]] bool isMetafileWithoutMark(const Content& content);
[[nodiscard]] bool isIcon(const Content& content);
[[nodiscard]] bool isPcx(const Content& content);
[[nodiscard]] bool isPdf(const Content& content);
// Sound frames of MPEG, layer III, and nothing in front of them.
[[nodiscard]] bool isSoundFrames(const Content& content);
[[nodiscard]] bool isOpenXml(const Content& content);
[[nodiscard]] bool isProgramZip(const Content& content);
// What a web browser runs.
[[nodiscard]] bool isHtml(const Content& content);
[[nodiscard]] bool isSvg(const Content& content);
// A file of a desktop that starts a program or leads to an address.
[[nodiscard]] bool isLauncher(const Content& content);
[[nodiscard]] bool isScript(const Content& content);
[[nodiscard]] bool isBatch(const Content& content);
[[nodiscard]] bool isXml(const Content& content);
// UTF-8, UTF-16 with its mark, or an 8-bit encoding, without control characters.
[[nodiscard]] bool isText(const Content& content);
[[nodiscard]] bool isNoText(const Content& content);

} // namespace vellumo
