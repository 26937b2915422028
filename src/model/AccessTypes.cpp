#include "model/AccessTypes.h"

namespace vellumo {

std::string_view accessTypeName(int code)
{
    switch (static_cast<AccessType>(code)) {
    case AccessType::Boolean: return "Boolean";
    case AccessType::Byte: return "Byte";
    case AccessType::Integer: return "Integer";
    case AccessType::LongInteger: return "Long Integer";
    case AccessType::Currency: return "Currency";
    case AccessType::Single: return "Single";
    case AccessType::Double: return "Double";
    case AccessType::DateTime: return "DateTime";
    case AccessType::Binary: return "Binary";
    case AccessType::Text: return "Text";
    case AccessType::OLE: return "OLE";
    case AccessType::Memo: return "Memo/Hyperlink";
    case AccessType::ReplicationId: return "Replication ID";
    case AccessType::Numeric: return "Numeric";
    case AccessType::ComplexValue: return "Complex Value auto number";
    }
    return {};
}

} // namespace vellumo
