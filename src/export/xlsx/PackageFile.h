// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace vellumo::xlsx {

// A zip archive whose members are written one after the other, in constant memory. It grows beside `path` and takes its
// place when it is finished; until then, and if it never is, what stood there is untouched and nothing is left. The
// first error sticks. One thread at a time.
class PackageFile {
public:
    // Null when the file cannot be made: there is no such folder, or `path` is anything but a regular file.
    [[nodiscard]] static std::unique_ptr<PackageFile> create(const std::string& path);
    ~PackageFile();
    PackageFile(const PackageFile&) = delete;
    PackageFile& operator=(const PackageFile&) = delete;

    // What is written from here on goes to a member of that name; slashes make folders.
    void beginMember(const std::string& name);
    void write(std::string_view bytes);

    [[nodiscard]] bool failed() const;
    // Call at most once. True when every byte got there; otherwise the file is given up.
    [[nodiscard]] bool finish();

private:
    struct Outputs;
    explicit PackageFile(std::unique_ptr<Outputs> outputs);

    std::unique_ptr<Outputs> m_outputs;
};

} // namespace vellumo::xlsx
