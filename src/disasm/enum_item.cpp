#include "disasm/enum_item.h"

#include "disasm/item_list.h"
#include "disasm/wording.h"
#include "import/text/format_text.h"
#include "params/layout.h"

namespace tarvex {

bool ZMostParameterListBaseInfo::Decode(const ZMTParamEnum& enumeration, Bytes message) {
    if (const auto hole = UnsureEnd(enumeration)) {
        return FaultAtHole(enumeration, *hole);
    }
    return TakeItem<ZMostParameterEnum>(*this, enumeration, enumeration.GetBytesInMsg(), message);
}

std::string ZMostParameterEnum::GetText() const {
    const std::string code = FormatText(Bytes().size() > 1 ? "0x%04X" : "0x%02X", RawValue());
    const std::string name = ValueName();
    return name.empty() ? code : name + " (" + code + ")";
}

std::string ZMostParameterEnum::ValueName() const {
    const std::uint32_t code = RawValue();
    const ZMTEnumValue* value = enumeration_.FindValue(code);
    return value == nullptr ? std::string() : ShownName(value->GetName());
}

}  // namespace tarvex
