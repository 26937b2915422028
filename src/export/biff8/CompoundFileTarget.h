// SPDX-License-Identifier: MIT
#pragma once

#include "export/biff8/RecordStream.h"

#include <memory>
#include <string>

namespace vellumo::biff8 {

// A compound file with the one stream "Workbook". It grows beside `path` and takes its place when it is
// finished; until then, and if it never is, what stood there is untouched and nothing is left. One thread at a time.
class CompoundFileTarget : public StreamTarget {
public:
    // Null when there is no such folder, it cannot be written to, or `path` is anything but a regular file.
    [[nodiscard]] static std::unique_ptr<CompoundFileTarget> create(const std::string& path);
    ~CompoundFileTarget() override;
    CompoundFileTarget(const CompoundFileTarget&) = delete;
    CompoundFileTarget& operator=(const CompoundFileTarget&) = delete;

    [[nodiscard]] bool write(std::string_view bytes) override;
    [[nodiscard]] bool overwrite(std::uint32_t offset, std::string_view bytes) override;
    // Call at most once. True when every byte got there; otherwise the file is given up.
    [[nodiscard]] bool finish();

private:
    struct Outputs;
    explicit CompoundFileTarget(std::unique_ptr<Outputs> outputs);

    std::unique_ptr<Outputs> m_outputs;
};

} // namespace vellumo::biff8
