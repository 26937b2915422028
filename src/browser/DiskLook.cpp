// SPDX-License-Identifier: MIT
#include "browser/DiskLook.h"

#include "platform/MainThread.h"

#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace vellumo {

struct DiskLook::Asker {
    std::mutex mutex;
    DiskLook* look; // null when it has gone
    MainThread& mainThread;

    [[nodiscard]] bool isAwaited()
    {
        const std::lock_guard lock(mutex);
        return look != nullptr;
    }
};

DiskLook::DiskLook(const FileFactsSource& source, MainThread& mainThread, Seen seen)
    : m_source(source)
    , m_seen(std::move(seen))
    , m_asker(new Asker{{}, this, mainThread})
{
}

DiskLook::~DiskLook()
{
    const std::lock_guard lock(m_asker->mutex);
    m_asker->look = nullptr;
}

void DiskLook::begin(const std::string& path)
{
    if (m_isAsking) return;
    const auto ask = [asker = m_asker, &source = m_source, path] {
        if (!asker->isAwaited()) return;
        const auto facts = source.facts(path);
        const std::lock_guard lock(asker->mutex);
        if (asker->look == nullptr) return; // and with it, perhaps, the main thread
        asker->mainThread.post([asker, path, facts] {
            if (asker->look != nullptr) asker->look->answered(path, facts);
        });
    };
    try {
        std::thread(ask).detach(); // it may never come back
        m_isAsking = m_isAnswerWanted = true;
    } catch (const std::system_error&) {
        // Too many threads already: the next look finds it.
    }
}

void DiskLook::answered(const std::string& path, const std::optional<FileFacts>& facts)
{
    m_isAsking = false;
    if (std::exchange(m_isAnswerWanted, false)) m_seen(path, facts);
}

} // namespace vellumo
