#include "embedded/ObjectCell.h"

#include "embedded/OleField.h"
#include "embedded/TAdmBlobData.h"

#include <algorithm>

namespace vellumo {

std::shared_ptr<TAdmBlobData> decodeObjectCell(Bytes stored, bool isWhole, UnpackBudget& budget)
{
    if (stored.empty()) return nullptr;
    ObjectFacts facts;
    if (!isWhole) facts.state = ObjectState::Damaged;
    OlePayload payload;
    if (mdb_read_ole_field(stored, payload) == 0 && !payload.data.empty()) {
        budget.bytesLeft -= std::min(budget.bytesLeft, payload.data.size());
        return std::make_shared<TAdmBlobData>(std::move(payload.data), std::move(payload.extension), facts);
    }
    return std::make_shared<TAdmBlobData>(std::vector<std::byte>(stored.begin(), stored.end()), "bin", facts);
}

} // namespace vellumo
