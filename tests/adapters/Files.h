// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace vellumo::test {

inline std::string readFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline bool isPrivate(const std::string& path)
{
    using std::filesystem::perms;
    return std::filesystem::status(path).permissions() == (perms::owner_read | perms::owner_write);
}

} // namespace vellumo::test
