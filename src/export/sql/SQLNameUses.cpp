#include "export/sql/SQLNameUses.h"

#include "text/CaseFold.h"

namespace vellumo {

std::string SQLNameUses::uniqueName(const std::string& name)
{
    auto& uses = m_uses[key(name)];
    const auto count = uses++;
    return count == 0 ? name : name + '_' + std::to_string(count);
}

std::string SQLNameUses::key(const std::string& name) const { return m_ignoresCase ? lowerCase(name) : name; }

} // namespace vellumo
