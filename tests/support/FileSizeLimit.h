// SPDX-License-Identifier: MIT
#pragma once

#include <csignal>
#include <sys/resource.h>

namespace vellumo::test {

// For its lifetime no file can grow past `bytes`, as if the disk were full.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limited{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limited);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit m_before{};
    void (*m_handler)(int) = nullptr;
};

} // namespace vellumo::test
