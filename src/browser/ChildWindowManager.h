#pragma once

#include "browser/ChildWindow.h"

#include <memory>
#include <vector>

namespace vellumo {

class VellumoAppDelegate;

// The table windows that are open, in the order in which they were opened.
class ChildWindowManager {
public:
    // The delegate outlives the manager.
    explicit ChildWindowManager(VellumoAppDelegate& delegate)
        : m_delegate(delegate)
    {
    }

    [[nodiscard]] const std::vector<std::unique_ptr<ChildWindow>>& childWins() const { return m_childWins; }

    // A new window, also for a table that is shown in one already.
    void createChildWindow(TAdmMDBTable& table);
    // Closes the windows that show a table of the file.
    void closeChildrenForFile(const TAdmMDBFile& file);
    // The window object is gone afterwards.
    void removeChild(const ChildWindow& window);
    void AllAlwaysOnTop(bool isOnTop);

    void refreshChildJumpBarMenus();

private:
    VellumoAppDelegate& m_delegate;
    std::vector<std::unique_ptr<ChildWindow>> m_childWins;
};

} // namespace vellumo
