#include "browser/FileOpener.h"

namespace vellumo {

OpenResult FileOpener::open(const std::shared_ptr<TAdmMDBFile>& file, Salvage salvage)
{
    if (file->active()) return OpenResult::Opened;
    if (m_isStoppedForGood) return OpenResult::Stopped;
    bool isStopped = false;
    const auto observer = [&](std::uint64_t rowsDone, std::uint64_t rowsExpected) {
        isStopped = isStopped || !m_view.openDidProgress(rowsDone, rowsExpected) || m_isStoppedForGood;
        return !isStopped;
    };
    m_isOpening = true;
    m_view.openDidBegin(*file);
    const bool isOpen = file->open({.observer = observer, .salvage = salvage});
    m_view.openDidEnd();
    m_isOpening = false;
    if (isOpen) return OpenResult::Opened;
    return isStopped ? OpenResult::Stopped : OpenResult::Failed;
}

} // namespace vellumo
