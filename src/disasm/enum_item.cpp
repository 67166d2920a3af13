#include "disasm/enum_item.h"

#include "disasm/item_list.h"
#include "import/text/format_text.h"
#include "import/text/wording.h"
#include "params/layout.h"

namespace tarvex {

bool ZMostParameterListBaseInfo::Decode(const ZMTParamEnum& enumeration, Bytes message) {
    if (const auto hole = UnsureEnd(enumeration)) {
        return FaultAtHole(enumeration, *hole);
    }
    return TakeItem<ZMostParameterEnum>(*this, enumeration, enumeration.GetBytesInMsg(), message);
}

void ZMostParameterEnum::AppendText(std::string& out) const {
    const std::string_view name = ValueName();
    AppendShownName(out, name);
    out += name.empty() ? "0x" : " (0x";
    AppendHexNumber(out, RawValue(), Bytes().size() > 1 ? 4 : 2);
    out += name.empty() ? "" : ")";
}

std::string_view ZMostParameterEnum::ValueName() const {
    const ZMTEnumValue* value = enumeration_.FindValue(RawValue());
    return value == nullptr ? std::string_view() : std::string_view(value->GetName());
}

}  // namespace tarvex
