#include "export/sql/SQLDateText.h"

#include <chrono>
#include <cstring>

namespace vellumo {

namespace {

constexpr std::string_view form = "dd/dd/dddd dd:dd:dd"; // d: any digit

bool hasForm(std::string_view cell)
{
    if (cell.size() != form.size()) return false;
    for (std::size_t i = 0; i < form.size(); ++i) {
        const bool isDigit = cell[i] >= '0' && cell[i] <= '9';
        if (form[i] == 'd' ? !isDigit : cell[i] != form[i]) return false;
    }
    return true;
}

unsigned twoDigits(const char* at) { return static_cast<unsigned>((at[0] - '0') * 10 + at[1] - '0'); }

bool exists(const char* cell)
{
    const auto year = static_cast<int>(twoDigits(cell + 6) * 100 + twoDigits(cell + 8));
    const std::chrono::year_month_day date(
        std::chrono::year(year), std::chrono::month(twoDigits(cell)), std::chrono::day(twoDigits(cell + 3)));
    return year > 0 && date.ok() && twoDigits(cell + 11) < 24 && twoDigits(cell + 14) < 60 && twoDigits(cell + 17) < 60;
}

} // namespace

std::optional<SQLDateText> sqlDateText(std::string_view cell)
{
    if (!hasForm(cell) || !exists(cell.data())) return std::nullopt;
    SQLDateText text;
    std::memcpy(text.data(), cell.data() + 6, 4);
    text[4] = '-';
    std::memcpy(text.data() + 5, cell.data(), 2);
    text[7] = '-';
    std::memcpy(text.data() + 8, cell.data() + 3, 2);
    std::memcpy(text.data() + 10, cell.data() + 10, 9);
    return text;
}

} // namespace vellumo
