#pragma once

#include <string>

namespace vellumo {

class TAdmBlobData;

// The text as one part of a path: what names and types come from a database may hold anything.
[[nodiscard]] std::string fileNamePart(std::string text);

// The name, without extension, of a file for the object's bytes: "Picture-3.damaged" when they are not those of a whole
// file.
[[nodiscard]] std::string nameForObject(std::string name, const TAdmBlobData& object);

// Writes the object's bytes as a file. False when that failed, or when `path` leads to the database itself, which is
// never written to. Then an older file is as it was; one that can only be written in place is empty.
[[nodiscard]] bool writeObjectFile(
    const TAdmBlobData& object, const std::string& path, const std::string& databasePath);

} // namespace vellumo
