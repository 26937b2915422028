// SPDX-License-Identifier: MIT
#pragma once

#include "platform/FileFacts.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace vellumo {

class MainThread;

// Asks for the facts of a file on a thread of its own: a file system that does not answer any more holds up nobody.
// Main thread only.
class DiskLook {
public:
    using Seen = std::function<void(const std::string& path, const std::optional<FileFacts>& facts)>;

    // `source` outlives all questions, the answered ones and the others; the main thread the object.
    DiskLook(const FileFactsSource& source, MainThread& mainThread, Seen seen);
    // Waits for no answer.
    ~DiskLook();
    DiskLook(const DiskLook&) = delete;
    DiskLook& operator=(const DiskLook&) = delete;

    // `seen` is called later. Nothing happens while an earlier question has no answer.
    void begin(const std::string& path);
    // An answer that is still to come is none any more.
    void forgetQuestion() { m_isAnswerWanted = false; }

private:
    struct Asker; // what the thread knows of this object
    void answered(const std::string& path, const std::optional<FileFacts>& facts);

    const FileFactsSource& m_source;
    Seen m_seen;
    std::shared_ptr<Asker> m_asker;
    bool m_isAsking = false;
    bool m_isAnswerWanted = false;
};

} // namespace vellumo
