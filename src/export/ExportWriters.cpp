#include "export/ExportWriters.h"

namespace vellumo {

ExportWriter exportWriterForType(ExportFileType type)
{
    switch (type) {
    case ExportFileType::CSV:
    case ExportFileType::TXT:
    case ExportFileType::XML: return exportTextFileThread;
    default: return nullptr;
    }
}

} // namespace vellumo
