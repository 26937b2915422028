// SPDX-License-Identifier: MIT
#pragma once

#include "export/biff8/RecordStream.h"

#include <atomic>
#include <memory>
#include <string>

namespace vellumo::biff8 {

// A compound file with the one stream "Workbook". It grows beside `path` and takes its place when it is
// finished; until then, and if it never is, what stood there is untouched and nothing is left. One thread at a time.
class CompoundFileTarget : public StreamTarget {
public:
    // Null, and the reason in errno, when there is no such folder, it cannot be written to, or `path` is anything but a
    // regular file. Once `stop`, which outlives the object unless it is null, is raised, nothing can be written any
    // more.
    [[nodiscard]] static std::unique_ptr<CompoundFileTarget> create(
        const std::string& path, const std::atomic<bool>* stop = nullptr);
    ~CompoundFileTarget() override;
    CompoundFileTarget(const CompoundFileTarget&) = delete;
    CompoundFileTarget& operator=(const CompoundFileTarget&) = delete;

    [[nodiscard]] bool write(std::string_view bytes) override;
    [[nodiscard]] bool overwrite(std::uint32_t offset, std::string_view bytes) override;
    // Call at most once. True when every byte got there; otherwise the file is given up.
    [[nodiscard]] bool finish();
    // The system's reason (errno) for the first failure; 0 for none, and where none is known.
    [[nodiscard]] int error() const { return m_error; }

private:
    struct Outputs;
    CompoundFileTarget(std::unique_ptr<Outputs> outputs, const std::atomic<bool>* stop);
    // Keeps the reason of a failure.
    [[nodiscard]] bool noted(bool isDone);

    std::unique_ptr<Outputs> m_outputs;
    const std::atomic<bool>* m_stop;
    int m_error = 0;
};

} // namespace vellumo::biff8
