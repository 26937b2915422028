#pragma once

#include <string>

namespace vellumo {

class TAdmBlobData;

// The text as one part of a path: what names and types come from a database may hold anything.
[[nodiscard]] std::string fileNamePart(std::string text);

// Writes the object's bytes as a file. False when that failed; then an older file is as it was.
[[nodiscard]] bool writeObjectFile(const TAdmBlobData& object, const std::string& path);

} // namespace vellumo
