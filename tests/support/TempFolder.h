// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace vellumo::test {

// A folder of its own for a test, removed with all that is in it.
class TempFolder {
public:
    TempFolder()
        : m_path((std::filesystem::temp_directory_path() / "vellumo-test-XXXXXX").string())
    {
        if (::mkdtemp(m_path.data()) == nullptr) std::abort();
    }
    ~TempFolder()
    {
        std::error_code error;
        std::filesystem::remove_all(m_path, error);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    [[nodiscard]] const std::string& path() const { return m_path; }
    [[nodiscard]] std::string path(std::string_view name) const { return m_path + "/" + std::string(name); }

    // The content of a file in the folder; nullopt when there is none.
    [[nodiscard]] std::optional<std::string> read(std::string_view name) const
    {
        std::ifstream stream(path(name), std::ios::binary);
        if (!stream) return std::nullopt;
        return std::string(std::istreambuf_iterator<char>(stream), {});
    }
    void write(std::string_view name, std::string_view bytes) const
    {
        std::ofstream(path(name), std::ios::binary) << bytes;
    }
    [[nodiscard]] bool exists(std::string_view name) const { return std::filesystem::exists(path(name)); }
    // The names of what is in it, sorted.
    [[nodiscard]] std::vector<std::string> names() const
    {
        std::vector<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(m_path))
            found.push_back(entry.path().filename());
        std::sort(found.begin(), found.end());
        return found;
    }

private:
    std::string m_path;
};

} // namespace vellumo::test
