// SPDX-License-Identifier: MIT
#pragma once

#include "export/ExactTextForm.h"

namespace vellumo {

// Well-formed XML whatever the names and texts hold: an element a record, an element a column.
class XMLForm : public ExactTextForm {
public:
    XMLForm(ExportJob& job, const TAdmMDBTable& table, EncodedFile& out);
    void begin() override;
    void addRecord(std::uint32_t row) override;
    void end() override;

private:
    [[nodiscard]] bool standAsTheyAre(const ExactCells& cells) const override;
    // From behind the name in the tag on.
    void addValue(const ExactCell& cell, std::size_t column, std::uint32_t row) override;
    void addContent(const ExactCell& cell, std::size_t column, std::uint32_t row);

    std::vector<std::string> m_ends; // of the elements, one a column
    std::string m_bytes;
};

// A column's name as the name of an element: "_xHHHH_" stands for a character that such names do not have, or that the
// encoding does not, and for the underscore of a name that reads like that itself.
[[nodiscard]] std::string xmlName(std::string_view name, TextEncoder& encoder);

} // namespace vellumo
