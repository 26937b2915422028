// SPDX-License-Identifier: MIT
#pragma once

#include "samples/Bytes.h"
#include "samples/JetVersion.h"

#include <optional>
#include <string>
#include <string_view>

// UTF-8 to the text forms of the format.
namespace vellumo::samples {

// nullopt for text that is not well-formed UTF-8.
[[nodiscard]] std::optional<std::u16string> toUtf16(std::string_view text);

// As names and plain texts are stored: code page 1252 in Jet 3, UTF-16 in Jet 4. nullopt when the text cannot be
// represented.
[[nodiscard]] std::optional<Bytes> encodeText(std::string_view text, JetVersion version);

// The compressed form of a Jet 4 text: FF FE, then runs of one byte or two bytes a character, a zero byte between two
// runs, the first run being of one byte a character. nullopt when it would not be shorter, and for a text with a
// character whose low byte is zero, since that would end the run.
[[nodiscard]] std::optional<Bytes> compressText(std::u16string_view text);

} // namespace vellumo::samples
