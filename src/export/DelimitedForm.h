// SPDX-License-Identifier: MIT
#pragma once

#include "export/ExactTextForm.h"

namespace vellumo {

// Fields between delimiters, as RFC 4180 has them: in quotes only where they would be misread, so that null, which is
// nothing at all, differs from an empty text, which is a pair of quotes.
class DelimitedForm : public ExactTextForm {
public:
    DelimitedForm(ExportJob& job, const TAdmMDBTable& table, EncodedFile& out);
    void begin() override;
    void enter(const RowGroup& group, std::size_t firstRow) override;
    void addRecord(std::uint32_t row) override;

private:
    void addField(const ExactCell& cell, std::size_t column, std::uint32_t row);
    void addObject(const ExactCell& cell, std::size_t column, std::uint32_t row);
    void addText(std::string_view field, bool mayNeedQuotes);
    void addGuarded(std::string_view field, std::size_t column);

    std::string_view m_delimiter;
    std::string_view m_lineEnd;
    std::vector<bool> m_mayNeedQuotes; // one a column of the group
    std::string m_guarded;
};

} // namespace vellumo
