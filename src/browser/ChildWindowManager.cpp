#include "browser/ChildWindowManager.h"

#include "browser/VellumoAppDelegate.h"

#include <algorithm>

namespace vellumo {

void ChildWindowManager::createChildWindow(TAdmMDBTable& table)
{
    m_childWins.push_back(std::make_unique<ChildWindow>(
        *this, m_delegate.mainWindow(), m_delegate.fileList(), m_delegate.desktop(), &table));
    refreshChildJumpBarMenus();
}

void ChildWindowManager::closeChildrenForFile(const TAdmMDBFile& file)
{
    // Removing a window shortens the list.
    for (auto i = m_childWins.size(); i-- > 0;) {
        const auto* table = m_childWins[i]->tableToShow();
        if (table != nullptr && table->file() == &file) m_childWins[i]->windowWillClose();
    }
}

void ChildWindowManager::removeChild(const ChildWindow& window)
{
    const auto isWindow = [&](const auto& child) { return child.get() == &window; };
    const auto place = std::find_if(m_childWins.begin(), m_childWins.end(), isWindow);
    if (place == m_childWins.end()) return;
    // Out of the list before it is destroyed: its port may look around while it goes.
    const auto closed = std::move(*place);
    m_childWins.erase(place);
}

void ChildWindowManager::AllAlwaysOnTop(bool isOnTop)
{
    for (const auto& window : m_childWins)
        window->port().setLevel(isOnTop ? WindowLevel::ModalPanel : WindowLevel::Normal);
}

void ChildWindowManager::refreshChildJumpBarMenus()
{
    for (const auto& window : m_childWins)
        window->refreshChildJumpBarMenu();
}

} // namespace vellumo
