#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

namespace vellumo::testing {

// A folder of its own for a test, gone with the object.
class TemporaryFolder {
public:
    TemporaryFolder()
        : m_path(::testing::TempDir() + "/vellumo-test-XXXXXX")
    {
        if (mkdtemp(m_path.data()) == nullptr) ADD_FAILURE() << "no temporary folder";
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] std::string file(const char* name) const { return m_path + '/' + name; }

private:
    std::string m_path;
};

inline void writeFile(const std::string& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary) << text;
}

inline std::string readFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline std::filesystem::perms modeOf(const std::string& path) { return std::filesystem::status(path).permissions(); }

constexpr auto ownerOnly = std::filesystem::perms::owner_read | std::filesystem::perms::owner_write;

} // namespace vellumo::testing
