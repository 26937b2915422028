// SPDX-License-Identifier: MIT
#pragma once

#include "samples/Bytes.h"

#include <string>
#include <string_view>

// Small documents that real programs open. Texts are ASCII without characters that need escaping.
namespace vellumo::samples {

[[nodiscard]] std::string pdfDocument(std::string_view line);
[[nodiscard]] std::string richTextDocument(std::string_view line);
[[nodiscard]] Bytes wordDocument(std::string_view line);     // docx
[[nodiscard]] Bytes openDocumentText(std::string_view line); // odt

} // namespace vellumo::samples
