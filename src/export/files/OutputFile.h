// SPDX-License-Identifier: MIT
#pragma once

#include "export/files/Replacement.h"

#include <cstddef>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace vellumo {

// The path that stands for standard output.
inline constexpr std::string_view standardOutputPath = "/dev/stdout";

// A file that is written from beginning to end through one large buffer, and takes its name when it is whole. The first
// error sticks: what comes after it goes nowhere, and `close` tells. A file that is not closed in the end is discarded.
// One thread at a time.
class OutputFile {
public:
    OutputFile();
    ~OutputFile() { discard(); }
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Creates the file, beside an existing one that stays until `close`. Standard output, a device, a pipe and what a
    // link to nowhere means are written in place. False when nothing of that can be done, and for a file that its
    // folder keeps from us: in place, it would be lost with the first error. No file is open before; the object may be
    // used for one file after the other.
    [[nodiscard]] bool open(const std::string& path);

    void write(std::string_view bytes)
    {
        if (bytes.empty()) return; // which may be no bytes anywhere
        if (bytes.size() > capacity - m_used) return writeThrough(bytes);
        std::memcpy(m_buffer.get() + m_used, bytes.data(), bytes.size());
        m_used += bytes.size();
    }

    // An earlier write failed.
    [[nodiscard]] bool failed() const { return m_failed; }

    // The system's reason for the first failure, a failed `open` included: errno, and as the end of a sentence. 0 and
    // "" for none.
    [[nodiscard]] int error() const { return m_error; }
    [[nodiscard]] std::string failureReason() const;

    // Writes what is left and gives the file its name. True when every byte got there; otherwise the file is discarded.
    [[nodiscard]] bool close();

    // Closes the file and removes it; of a regular file that was written in place only what stood there stays. Nothing
    // happens when no file is open.
    void discard();

private:
    static constexpr std::size_t capacity = std::size_t{256} << 10;

    void writeThrough(std::string_view bytes);
    void flush();
    void writeNow(std::string_view bytes);
    void openInPlace(const std::string& path);
    void takeBack() const;
    void noteFailure();
    [[nodiscard]] bool closeDescriptor();

    std::unique_ptr<char[]> m_buffer;
    std::size_t m_used = 0;
    std::unique_ptr<Replacement> m_replacement; // null: it is written in place
    int m_descriptor = -1;
    off_t m_sizeBefore = 0; // of a file that is written in place
    bool m_failed = false;
    int m_error = 0; // errno of the first failure
};

} // namespace vellumo
