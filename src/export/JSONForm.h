// SPDX-License-Identifier: MIT
#pragma once

#include "export/ExactTextForm.h"

namespace vellumo {

// One JSON object a line and record, with every column. Numbers that a double may not hold stand as strings.
class JSONForm : public ExactTextForm {
public:
    JSONForm(ExportJob& job, const TAdmMDBTable& table, EncodedFile& out);
    void addRecord(std::uint32_t row) override;

private:
    [[nodiscard]] bool standAsTheyAre(const ExactCells& cells) const override;
    void addValue(const ExactCell& cell, std::size_t column, std::uint32_t row) override;
    void addReal(const ExactCell& cell, std::size_t column);
    void addObject(const ExactCell& cell, std::size_t column, std::uint32_t row);

    std::string m_bytes;
};

} // namespace vellumo
