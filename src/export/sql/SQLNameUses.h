#pragma once

#include <map>
#include <string>

namespace vellumo {

// Makes the names of indexes unique within one export.
class SQLNameUses {
public:
    // `ignoresCase`: names that differ only in letter case are the same name.
    explicit SQLNameUses(bool ignoresCase)
        : m_ignoresCase(ignoresCase)
    {
    }

    // The name is taken, once, whatever was known of it.
    void take(const std::string& name) { m_uses[key(name)] = 1; }
    // The name itself when it is free, else with "_1" behind it, "_2" the next time, and so on.
    [[nodiscard]] std::string uniqueName(const std::string& name);

private:
    [[nodiscard]] std::string key(const std::string& name) const;

    bool m_ignoresCase;
    std::map<std::string, int> m_uses;
};

} // namespace vellumo
