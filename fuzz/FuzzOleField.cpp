#include "embedded/OleField.h"
#include "embedded/TAdmBlobData.h"

#include <cstdlib>

// One input is one raw object cell. What comes out is shown as the grid and the detail pane would show it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    vellumo::OlePayload payload;
    const auto status = vellumo::mdb_read_ole_field(std::as_bytes(std::span(data, size)), payload);
    if (status != 0) {
        if (!payload.data.empty() || !payload.extension.empty()) std::abort();
        return 0;
    }
    // The best that deflate can do: more bytes cannot have come from this cell.
    if (payload.data.size() > size * 1032) std::abort();
    const vellumo::TAdmBlobData blob(std::move(payload.data), std::move(payload.extension));
    if (blob.cellDescription().empty()) std::abort();
    if (blob.description().empty() && blob.data().size() > 4) std::abort();
    return 0;
}
