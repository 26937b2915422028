#pragma once

#include "embedded/Bytes.h"

#include <string_view>

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

} // namespace vellumo
