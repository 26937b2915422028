#pragma once

#include <optional>
#include <string>

namespace vellumo {

// A file that is made beside the one whose place it takes, so that a program that is killed in between leaves nothing
// that could be taken for a finished file, and an older one whole.
struct Replacement {
    std::string target; // links followed
    std::string part;   // the name meanwhile, in the same folder; left-overs of a killed program go

    // For `path`, where there is a regular file or nothing. Nothing for all else (a folder, a device, a link that leads
    // nowhere), which cannot be replaced but only be written to.
    [[nodiscard]] static std::optional<Replacement> of(const std::string& path);

    // Gives the finished file its name. What fails leaves nothing of it.
    [[nodiscard]] bool finish() const;
    // Removes the file.
    void discard() const;
};

} // namespace vellumo
