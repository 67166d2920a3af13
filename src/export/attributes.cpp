#include "export/attributes.h"

#include <algorithm>

namespace tarvex {
namespace {

void Fill(attr_def& definition, const AttributeRow& row) {
    definition.object_kind = row.object;
    CopyName(definition.name, row.name);
    definition.value_type = row.type;
    switch (row.type) {
        case AttrType::Integer:
            definition.minimum = 0;
            definition.maximum = row.maximum;
            definition.default_number = row.defaultNumber;
            break;
        case AttrType::Enumeration:
            definition.value_list = GiveToKestrel(row.values);
            definition.default_text = GiveToKestrel(row.defaultText);
            break;
        case AttrType::String:
            definition.default_text = GiveToKestrel(row.defaultText);
            break;
    }
}

}  // namespace

char* GiveToKestrel(std::string_view text) {
    auto* copy = static_cast<char*>(kestrel_malloc(text.size() + 1));
    *std::ranges::copy(text, copy).out = '\0';
    return copy;
}

kestrel_attr_value_t NumberValue(double number) {
    return {.number = number};
}

kestrel_attr_value_t TextValue(std::string_view text) {
    return {.text = GiveToKestrel(text)};
}

void CopyName(char (&name)[kNameSize], std::string_view text) {
    std::ranges::fill(std::ranges::copy(text.substr(0, kNameSize), name).out, std::end(name), '\0');
}

void DefineAttributes(KestrelWriteManager& writer, const char* database, const std::string& catalogFileName) {
    for (const AttributeRow& row : kAttributes) {
        attr_def* definition = writer.CreateAttrDefinition(database, 0);
        if (definition == nullptr) {
            continue;
        }
        Fill(*definition, row);
        if (row.name == kBusType) {
            writer.SetAttrValue(database, kBusType, TextValue("MOST"));
        } else if (row.name == kMostXMLFile) {
            writer.SetAttrValue(database, kMostXMLFile, TextValue(catalogFileName));
        }
    }
}

}  // namespace tarvex
