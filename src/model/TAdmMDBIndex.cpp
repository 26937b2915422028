// SPDX-License-Identifier: MIT
#include "model/TAdmMDBIndex.h"

namespace vellumo {

Information TAdmMDBIndex::information() const
{
    return {{PropertyId::Name, name()}, {PropertyId::IndexKeys, m_keys}, {PropertyId::PrimaryKey, m_isPrimaryKey},
        {PropertyId::Unique, m_isUnique}};
}

} // namespace vellumo
