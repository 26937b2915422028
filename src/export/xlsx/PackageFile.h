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
    // Null, and the reason in errno, when the file cannot be made: there is no such folder, or `path` is anything but a
    // regular file.
    [[nodiscard]] static std::unique_ptr<PackageFile> create(const std::string& path);
    ~PackageFile();
    PackageFile(const PackageFile&) = delete;
    PackageFile& operator=(const PackageFile&) = delete;

    // What is written from here on goes to a member of that name; slashes make folders.
    void beginMember(const std::string& name);
    void write(std::string_view bytes);

    [[nodiscard]] bool failed() const;
    // The system's reason (errno) for the first failure; 0 for none, and where none is known.
    [[nodiscard]] int error() const { return m_error; }
    // Call at most once. True when every byte got there; otherwise the file is given up.
    [[nodiscard]] bool finish();

private:
    struct Outputs;
    explicit PackageFile(std::unique_ptr<Outputs> outputs);
    // Keeps the reason of a failure.
    bool noted(bool isDone);

    std::unique_ptr<Outputs> m_outputs;
    int m_error = 0;
};

} // namespace vellumo::xlsx
