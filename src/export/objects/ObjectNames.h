#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>

namespace vellumo {

class TAdmBlobData;

// Names for folders side by side: no two that some file system would take for the same.
class FolderNames {
public:
    // The name is not given out.
    void reserve(std::string_view name);
    // A folder's name for a name from a database: cleaned, of at most 120 bytes, with " (2)" and so on behind it when
    // another has it already.
    [[nodiscard]] std::string nameFor(std::string_view name);

private:
    std::set<std::string> m_taken; // letter case folded
};

// The name of an object's file in the folder of its column: "ROW[-NAME].EXT", of at most 120 bytes. `row` counts
// from 1.
[[nodiscard]] std::string objectFileName(std::size_t row, const TAdmBlobData& object);

} // namespace vellumo
