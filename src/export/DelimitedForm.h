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
    void addRecord(std::uint32_t row) override;

private:
    [[nodiscard]] bool standAsTheyAre(const ExactCells& cells) const override;
    [[nodiscard]] char dateSeparator() const override { return ' '; }
    void addValue(const ExactCell& cell, std::size_t column, std::uint32_t row) override;
    void addObject(const ExactCell& cell, std::size_t column, std::uint32_t row);
    void addText(std::string_view field);
    void addGuarded(std::string_view field, std::size_t column);

    std::string_view m_delimiter;
    std::string_view m_lineEnd;
    bool m_guardsFormulas;
    std::string m_guarded;
};

} // namespace vellumo
