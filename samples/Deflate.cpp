// SPDX-License-Identifier: MIT
#include "samples/Deflate.h"

#include <zlib.h>

namespace vellumo::samples {

Bytes zlibStream(ByteSpan bytes)
{
    Bytes out(compressBound(static_cast<uLong>(bytes.size())));
    auto size = static_cast<uLongf>(out.size());
    // The buffer is as large as the worst case, so only a lack of memory can make this fail.
    if (compress2(out.data(), &size, bytes.data(), static_cast<uLong>(bytes.size()), Z_BEST_COMPRESSION) != Z_OK)
        size = 0;
    out.resize(size);
    return out;
}

} // namespace vellumo::samples
