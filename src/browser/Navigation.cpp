#include "browser/Navigation.h"

namespace vellumo {

void Navigation::goBack(const Show& show)
{
    if (const auto target = m_history.backTarget()) m_history.finishBack(showTable(*target, show));
}

void Navigation::goForth(const Show& show)
{
    if (const auto target = m_history.nextTarget()) m_history.finishNext(showTable(*target, show));
}

bool Navigation::showTable(const ItemId& id, const Show& show) const
{
    const auto item = m_files.find(id);
    if (item.isTable()) show(item);
    return item.isTable();
}

void Navigation::fileWillClose(TAdmMDBFile& file)
{
    m_history.removeTables(m_files.tableIds(file));
    m_jumpBar.clear();
}

} // namespace vellumo
