// SPDX-License-Identifier: MIT
#include "platform/DatabasePath.h"

#include "text/Ascii.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace vellumo {

namespace {

namespace fs = std::filesystem;

// "Sales" of "Sales" and "Sales."; "" when the name has an extension.
std::string nameWithoutExtension(const fs::path& path)
{
    auto name = path.filename().string();
    if (name.ends_with('.')) return name.substr(0, name.size() - 1);
    return path.has_extension() ? std::string() : name;
}

bool isDatabaseNamed(const fs::path& file, const std::string& name)
{
    const auto extension = asciiLower(file.extension().string());
    return file.stem().string() == name && (extension == ".mdb" || extension == ".accdb");
}

} // namespace

std::vector<std::string> databaseFilesMeantBy(const std::string& path)
{
    const fs::path given(path);
    const auto name = nameWithoutExtension(given);
    std::error_code error;
    if (name.empty() || fs::exists(given, error)) return {};
    std::vector<std::string> files;
    // A folder that cannot be read has no such file for us.
    for (fs::directory_iterator entry(given.parent_path(), error), end; !error && entry != end; entry.increment(error))
        if (isDatabaseNamed(entry->path(), name)) files.push_back(entry->path().string());
    std::ranges::sort(files);
    return files;
}

std::string completedDatabasePath(const std::string& path)
{
    const auto files = databaseFilesMeantBy(path);
    return files.size() == 1 ? files.front() : path;
}

} // namespace vellumo
