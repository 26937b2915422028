#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vellumo {

class TAdmBlobData;

// The text as one part of a path: what names and types come from a database may hold anything. Characters that some
// file system or terminal takes for more than a letter become "_"; the part is never "", "." or "..".
[[nodiscard]] std::string fileNamePart(std::string_view text);

// The object's extension as it ends a file name: ".jpg", "" without one. What is left of a damaged object never looks
// like a whole file: ".damaged.jpg".
[[nodiscard]] std::string objectFileEnding(const TAdmBlobData& object);

// Writes the object's bytes as a file. False when that failed, or when `path` leads to the database itself, which is
// never written to. Then an older file is as it was; one that can only be written in place is empty.
[[nodiscard]] bool writeObjectFile(
    const TAdmBlobData& object, const std::string& path, const std::string& databasePath);
// The same: nullopt when it was written, else the reason (localised), as the end of a sentence.
[[nodiscard]] std::optional<std::string> objectFileFailure(
    const TAdmBlobData& object, const std::string& path, const std::string& databasePath);

// Whether the path leads to the database, by whatever name.
[[nodiscard]] bool isDatabase(const std::string& path, const std::string& databasePath);
// What the reason is then (localised).
[[nodiscard]] std::string isDatabaseText();

} // namespace vellumo
