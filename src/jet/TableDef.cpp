#include "jet/TableDef.h"

namespace vellumo::jet {

std::string_view mdb_get_colbacktype_string_fromMdbType(int typeCode)
{
    switch (typeCode) {
    case 1: return "Boolean";
    case 2: return "Byte";
    case 3: return "Integer";
    case 4: return "Long Integer";
    case 5: return "Currency";
    case 6: return "Single";
    case 7: return "Double";
    case 8: return "DateTime";
    case 9: return "Binary";
    case 10: return "Text";
    case 11: return "OLE";
    case 12: return "Memo/Hyperlink";
    case 15: return "Replication ID";
    case 16: return "Numeric";
    case 18: return "Complex Value auto number";
    default: return {};
    }
}

} // namespace vellumo::jet
