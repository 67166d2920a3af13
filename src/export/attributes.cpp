#include "export/attributes.h"

#include "export/kestrel_values.h"

namespace tarvex {
namespace {

std::string JoinLines(std::span<const char* const> lines) {
    std::string text;
    for (const char* line : lines) {
        text += text.empty() ? "" : "\n";
        text += line;
    }
    return text;
}

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
            definition.value_list = GiveToKestrel(JoinLines(row.values));
            definition.default_text = GiveToKestrel(row.defaultText);
            break;
        case AttrType::String:
            definition.default_text = GiveToKestrel(row.defaultText);
            break;
    }
}

}  // namespace

attr_def* DefineAttribute(KestrelWriteManager& writer, const char* database, const AttributeRow& row) {
    attr_def* definition = writer.CreateAttrDefinition(database, 0);
    if (definition != nullptr) {
        Fill(*definition, row);
    }
    return definition;
}

void DefineAttributes(KestrelWriteManager& writer, const char* database, const std::string& catalogFileName) {
    for (const AttributeRow& row : kAttributes) {
        if (DefineAttribute(writer, database, row) == nullptr) {
            continue;
        }
        if (row.name == kBusType) {
            writer.SetAttrValue(database, kBusType, TextValue("MOST"));
        } else if (row.name == kMostXMLFile) {
            writer.SetAttrValue(database, kMostXMLFile, TextValue(catalogFileName));
        }
    }
}

}  // namespace tarvex
