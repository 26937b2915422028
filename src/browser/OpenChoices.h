// SPDX-License-Identifier: MIT
#pragma once

#include "model/TAdmMDBFile.h"
#include "platform/Defaults.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vellumo {

// An encoding that the texts of an Access 97 file may be in.
struct TextEncodingItem {
    int codePage;
    std::string title; // localised: "Cyrillic (1251)"
};
[[nodiscard]] std::vector<TextEncodingItem> textEncodingItems();

// How files are to be opened: what the user has settled for all of them, or for one by its path. Passwords are not
// among it: they are asked for, used and forgotten. Main thread only.
class OpenChoices {
public:
    void readFrom(const Defaults& defaults);
    void writeTo(Defaults& defaults) const;

    // Files of Access 2007 to 2019: all of them, or this one until the program ends.
    [[nodiscard]] bool opensNewerFiles() const { return m_opensNewerFiles; }
    void setOpensNewerFiles(bool opens) { m_opensNewerFiles = opens; }
    void acceptNewerFile(const std::string& path) { m_accepted.insert(path); }

    // The code page for the texts of an Access 97 file; nullopt for the one that it states.
    [[nodiscard]] std::optional<int> codePage(const std::string& path) const;
    void setCodePage(const std::string& path, std::optional<int> codePage);

    // Without observer and password.
    [[nodiscard]] OpenOptions optionsFor(const TAdmMDBFile& file) const;

private:
    bool m_opensNewerFiles = false;
    std::set<std::string> m_accepted;
    std::map<std::string, int> m_codePages; // by path
};

} // namespace vellumo
