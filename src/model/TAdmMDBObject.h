#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <variant>
#include <vector>

namespace vellumo {

// A value of an information list: a text or a whole number.
using InfoValue = std::variant<std::string, std::int64_t>;

// The value as text, numbers in plain digits.
[[nodiscard]] std::string infoText(const InfoValue& value);

// Base of everything that a database catalogue names: file, table, column, index, relation.
class TAdmMDBObject {
public:
    virtual ~TAdmMDBObject() = default;

    // UTF-8, initially empty.
    [[nodiscard]] const std::string& name() const { return m_name; }
    void setName(std::string name) { m_name = std::move(name); }

    // -1, 0 or 1: the names in the order of finderCompare.
    [[nodiscard]] virtual int compareByName(const TAdmMDBObject& other) const;

    // What the information pane shows: the localised labels in display order, and the value of each label. Values
    // that do not match the labels in number give an empty mapping.
    [[nodiscard]] virtual std::vector<std::string> getObjectLabels() const = 0;
    [[nodiscard]] std::map<std::string, InfoValue> getObjectValues() const;

protected:
    TAdmMDBObject() = default;
    TAdmMDBObject(const TAdmMDBObject&) = default;
    TAdmMDBObject& operator=(const TAdmMDBObject&) = default;

    // The values in the order of the labels.
    [[nodiscard]] virtual std::vector<InfoValue> infoValues() const = 0;

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
