// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <sys/stat.h>

namespace vellumo {

// A file that is made beside the one whose place it takes, so that a program that is killed in between leaves nothing
// that could be taken for a finished file, and an older one whole. It goes with the object unless it was finished.
class Replacement {
public:
    // Makes the file, empty, for `path`, where there is a regular file that may be written, or nothing. Owner and mode
    // are those of the older file as far as the system allows. Null, and the reason in errno, for all else: a folder, a
    // device, a link that leads nowhere, a folder that takes no new file or keeps the older one from us.
    [[nodiscard]] static std::unique_ptr<Replacement> create(const std::string& path);
    ~Replacement();
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    // The name meanwhile, in the same folder. No other file had it.
    [[nodiscard]] const std::string& part() const { return m_part; }
    [[nodiscard]] const std::string& target() const { return m_target; } // links followed
    // For reading and writing. The caller closes it, once, before the end.
    [[nodiscard]] int takeDescriptor();
    // The same as a stream of the C library; null and the reason in errno when there is none to be had.
    [[nodiscard]] std::FILE* takeStream();

    // For a library that only takes names that are free: removes the empty file, and looks after the one that was made
    // in its stead. False when that cannot have the older file's mode.
    void makeRoom();
    [[nodiscard]] bool adopt() const;

    // Gives the whole file its name once the disk has it, and has the disk keep the name. What fails leaves nothing of
    // it, and the reason in errno; only when the disk refuses to keep the name does the file have it already.
    [[nodiscard]] bool finish();

private:
    Replacement(std::string target, std::string part, int descriptor);
    [[nodiscard]] bool takeAfterOlderFile();
    void closeDescriptor();

    std::string m_target;
    std::string m_part;
    int m_descriptor;
    std::optional<mode_t> m_olderMode; // nothing: there is no older file
    bool m_isFinished = false;
};

} // namespace vellumo
