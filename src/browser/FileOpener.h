#pragma once

#include "browser/MainWindowView.h"

#include <memory>

namespace vellumo {

enum class OpenResult { Opened, Failed, Stopped };

// Opens files while the window shows how far it is and lets the user stop.
class FileOpener {
public:
    // `view` outlives the opener.
    explicit FileOpener(MainWindowView& view)
        : m_view(view)
    {
    }

    // Opened also for a file that is open already. Stopped: by the user, so there is nothing to complain about.
    [[nodiscard]] OpenResult open(const std::shared_ptr<TAdmMDBFile>& file, Salvage salvage = Salvage::None);
    // From now on every opening counts as stopped, also the one that runs.
    void stopForGood() { m_isStoppedForGood = true; }
    // True during `open`, when the window may call in while it redraws.
    [[nodiscard]] bool isOpening() const { return m_isOpening; }

private:
    MainWindowView& m_view;
    bool m_isOpening = false;
    bool m_isStoppedForGood = false;
};

} // namespace vellumo
