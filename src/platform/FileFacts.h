// SPDX-License-Identifier: MIT
#pragma once

#include "text/DateText.h"

#include <cstdint>
#include <optional>
#include <string>

namespace vellumo {

struct FileFacts {
    std::uint64_t size = 0; // bytes
    Timestamp created;      // birth time, or the time of the last status change where the file system keeps none
    Timestamp modified;
    Timestamp accessed;
};

// Size and dates of a file or folder. Any thread.
class FileFactsSource {
public:
    virtual ~FileFactsSource() = default;
    // nullopt when there is no such file, or it cannot be looked at.
    [[nodiscard]] virtual std::optional<FileFacts> facts(const std::string& path) const = 0;
};

// The facts as the operating system tells them.
class SystemFileFacts : public FileFactsSource {
public:
    [[nodiscard]] std::optional<FileFacts> facts(const std::string& path) const override;
};

} // namespace vellumo
