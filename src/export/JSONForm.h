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
    void addValue(const ExactCell& cell, std::size_t column, std::uint32_t row);
    void addReal(const ExactCell& cell, std::size_t column);
    void addObject(const ExactCell& cell, std::size_t column, std::uint32_t row);

    std::vector<std::string> m_keys; // with what stands in front of the value
    std::string m_bytes;
};

} // namespace vellumo
