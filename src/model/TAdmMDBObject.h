// SPDX-License-Identifier: MIT
#pragma once

#include "model/Information.h"

namespace vellumo {

// Base of everything that a database catalogue names: file, table, column, index, relation.
class TAdmMDBObject {
public:
    virtual ~TAdmMDBObject() = default;

    // UTF-8, initially empty.
    [[nodiscard]] const std::string& name() const { return m_name; }
    void setName(std::string name) { m_name = std::move(name); }

    // -1, 0 or 1: the names in the order of finderCompare.
    [[nodiscard]] virtual int compareByName(const TAdmMDBObject& other) const;

    // What is known of it, in display order.
    [[nodiscard]] virtual Information information() const = 0;
    // The same as the information pane shows it, localised: the labels, and in the same order their values.
    [[nodiscard]] std::vector<std::string> getObjectLabels() const;
    [[nodiscard]] std::vector<std::string> getObjectValues() const;

protected:
    TAdmMDBObject() = default;
    TAdmMDBObject(const TAdmMDBObject&) = default;
    TAdmMDBObject& operator=(const TAdmMDBObject&) = default;

private:
    std::string m_name;
};

// Orders a list of (smart) pointers to catalogue objects by name; equal names keep their order.
template <typename List> void sortByName(List& list);

} // namespace vellumo

#include <algorithm>

template <typename List> void vellumo::sortByName(List& list)
{
    std::stable_sort(list.begin(), list.end(), [](const auto& a, const auto& b) { return a->compareByName(*b) < 0; });
}
