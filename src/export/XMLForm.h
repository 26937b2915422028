// SPDX-License-Identifier: MIT
#pragma once

#include "export/ExactTextForm.h"

namespace vellumo {

// Well-formed XML whatever the names and texts hold: an element a record, an element a column.
class XMLForm : public ExactTextForm {
public:
    XMLForm(ExportJob& job, const TAdmMDBTable& table, EncodedFile& out);
    void begin() override;
    void enter(const RowGroup& group, std::size_t firstRow) override;
    void addRecord(std::uint32_t row) override;
    void end() override;

private:
    void addElement(const ExactCell& cell, std::size_t column, std::uint32_t row);
    void addValue(const ExactCell& cell, std::size_t column, std::uint32_t row);

    std::vector<std::string> m_starts; // of the elements, one a column, but for the end of the first tag
    std::vector<std::string> m_ends;
    std::vector<bool> m_mayNeedEscapes; // one a column of the group
    std::string m_bytes;
};

// A column's name as the name of an element: "_xHHHH_" stands for a character that such names do not have, or that the
// encoding does not, and for the underscore of a name that reads like that itself.
[[nodiscard]] std::string xmlName(std::string_view name, TextEncoder& encoder);

} // namespace vellumo
