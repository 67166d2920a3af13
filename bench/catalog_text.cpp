#include "catalog_text.h"

#include <array>
#include <iterator>

namespace tarvex::bench {
namespace {

constexpr const char* kWords[] = {
    "Volume", "Track",   "Title", "Source", "Channel", "Station",  "Phone",  "Number", "Active",  "Device",
    "Mode",   "Range",   "Speed", "Level",  "Balance", "Preset",   "Folder", "Disc",   "Antenna", "Signal",
    "Seek",   "Storage", "Route", "Target", "Display", "Language", "Unit",   "Timer",  "Status",  "Request"};

constexpr const char* kSentences[] = {
    "Tells what the device does at the moment and which of its sources is heard.\n",
    "A controller that asks for a value outside the range gets an error &lt;ErrorCode&gt; instead.\n",
    "W\xC3\xA4hrend des Suchlaufs bleibt der alte Wert g\xC3\xBCltig; danach folgt eine Meldung.\n",
    "\tThe value is kept over a restart &amp; sent again to every device in the notification list.\n",
    "Changes within 100 ms are collected, so that the bus carries one message for all of them.\n",
    "See also the functions &lt;FktID1&gt; to &lt;FktIDn&gt; of the same block.\n"};

/// The same without references.
constexpr const char* kPlainSentences[] = {
    "Tells what the device does at the moment and which of its sources is heard.\n",
    "A controller that asks for a value outside the range gets an error (ErrorCode) instead.\n",
    "W\xC3\xA4hrend des Suchlaufs bleibt der alte Wert g\xC3\xBCltig; danach folgt eine Meldung.\n",
    "\tThe value is kept over a restart and sent again to every device in the notification list.\n",
    "Changes within 100 ms are collected, so that the bus carries one message for all of them.\n",
    "See also the functions (FktID1) to (FktIDn) of the same block.\n"};
static_assert(std::size(kPlainSentences) == std::size(kSentences));

constexpr const char* kSwitchType =
    R"(<TBool TypeRef="type_boolean"><TBoolField BitPos="0"><BitTrueDesc>On</BitTrueDesc>)"
    R"(<BitFalseDesc>Off</BitFalseDesc></TBoolField></TBool>)";

constexpr unsigned kSmallFunctionBlocks = 255;
constexpr unsigned kSmallFunctionsPerBlock = 1000;
constexpr std::size_t kLongDescription = 100'000;
constexpr unsigned kLargeEnumeration = 5000;

constexpr std::string_view kVoid = R"(<TVoid TypeRef="type_void"/>)";

}  // namespace

CatalogText::CatalogText(const CatalogPlan& plan, std::FILE* out)
    : plan_(plan), out_(out), random_(plan.seed) {}

void CatalogText::Write() {
    Put("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
    if (plan_.withDoctype) {
        Put("<!DOCTYPE FunctionCatalog SYSTEM \"fcat.dtd\">\n");
    }
    Put("<FunctionCatalog>\n");
    Line(1, "<CatalogVersion><Release>1.0</Release><Date>2024-01-01</Date></CatalogVersion>");
    WriteBlocks();
    WriteDefinition();
    Put("</FunctionCatalog>\n");
}

void CatalogText::WriteBlocks() {
    if (plan_.shape == Shape::SmallFunctions) {
        for (unsigned block = 0; block < kSmallFunctionBlocks && written_ < plan_.bytes; ++block) {
            WriteBlock(block, plan_.bytes);
        }
        return;
    }
    for (unsigned block = 0; block < plan_.blocks; ++block) {
        const std::uint64_t endOfBlock = plan_.bytes / plan_.blocks * (block + 1);
        if (HasCommonFunctions() || written_ < endOfBlock) {
            WriteBlock(block, endOfBlock);
        }
    }
}

void CatalogText::WriteBlock(unsigned fBlockID, std::uint64_t endOfBlock) {
    constexpr unsigned kFirstOwnFunction = 0x200;
    constexpr unsigned kLargestFunction = 0xFFF;
    const unsigned functionEnd = plan_.shape == Shape::SmallFunctions
                                     ? kFirstOwnFunction + kSmallFunctionsPerBlock
                                     : kLargestFunction + 1;
    std::array<char, 64> head = {};
    std::snprintf(head.data(), head.size(), "<FBlockID>0x%02X</FBlockID><FBlockName>%s%u</FBlockName>",
                  fBlockID, kWords[fBlockID % std::size(kWords)], fBlockID);
    Line(1, "<FBlock>");
    Line(2, head.data());
    Line(2, "<FBlockDescription>" + Words(12) + "</FBlockDescription>");
    Line(2, "<FBlockVersion><Release>2.4</Release><Date>2023-11-02</Date></FBlockVersion>");
    if (HasCommonFunctions()) {
        WriteCommonFunctions();
    }
    for (unsigned fktID = kFirstOwnFunction; fktID < functionEnd && written_ < endOfBlock; ++fktID) {
        WriteFunction(fktID);
    }
    Line(1, "</FBlock>");
}

/// The functions that every block has, with the parameters that repeat all over a catalog.
void CatalogText::WriteCommonFunctions() {
    OpenFunction(0x001, "Notification");
    OpenClass("class_unclassified_property", "Property", "PUnclassified");
    Param("PU", "Control", 1, "PCmdSet", "", EnumType(4));
    Param("PU", "DeviceID", 2, "PCmdSet", "", NumberType());
    Param("PU", "ErrorCode", 1, "", "PReportError", EnumType(12));
    Param("PU", "ErrorInfo", 2, "", "PReportError", NumberType());
    Get("PU");
    CloseClass("Property", "PUnclassified");
    OpenFunction(0x101, "Allocate");
    OpenClass("class_unclassified_method", "Method", "MUnclassified");
    Param("MU", "SourceNr", 1, "MCmdStartResult", "MReportResult", NumberType());
    Param("MU", "ErrorCode", 1, "", "MReportError", EnumType(12));
    Param("MU", "ErrorInfo", 2, "", "MReportError", NumberType());
    CloseClass("Method", "MUnclassified");
}

void CatalogText::WriteFunction(unsigned fktID) {
    constexpr void (CatalogText::*kKinds[])(const std::string&) = {
        &CatalogText::WriteNumber, &CatalogText::WriteNumber, &CatalogText::WriteEnumeration,
        &CatalogText::WriteSwitch, &CatalogText::WriteText,   &CatalogText::WriteBits,
        &CatalogText::WriteRecord, &CatalogText::WriteArray,  &CatalogText::WriteMethod,
        &CatalogText::WriteTrigger};
    const std::string name = Name() + std::to_string(fktID);
    OpenFunction(fktID, name);
    switch (plan_.shape) {
        case Shape::Realistic:
        case Shape::Plain:
        case Shape::LongDescriptions:
            return (this->*kKinds[Below(std::size(kKinds))])(name);
        case Shape::OneName:
            return WriteEqualNames();
        case Shape::Enumerations:
            return WriteLargeEnumeration(name);
        case Shape::SmallFunctions:
            return WriteSmall(name);
    }
}

void CatalogText::WriteNumber(const std::string& name) {
    OpenClass("class_number", "Property", "PNumber");
    Param("PN", name, 1, "PCmdSet PCmdSetGet", "PReportStatus", NumberType());
    Param("PN", "NSteps", 1, "PCmdIncrement PCmdDecrement", "", NumberType());
    Param("PN", "ErrorCode", 1, "", "PReportError", EnumType(12));
    Param("PN", "ErrorInfo", 2, "", "PReportError", NumberType());
    Get("PN");
    CloseClass("Property", "PNumber");
}

void CatalogText::WriteEnumeration(const std::string& name) {
    OpenClass("class_enumeration", "Property", "PEnum");
    Param("PE", name, 1, "PCmdSet PCmdSetGet", "PReportStatus", EnumType(3 + Below(30)));
    Param("PE", "ErrorCode", 1, "", "PReportError", EnumType(12));
    Get("PE");
    CloseClass("Property", "PEnum");
}

void CatalogText::WriteSwitch(const std::string& name) {
    OpenClass("class_switch", "Property", "PSwitch");
    Param("PS", name, 1, "PCmdSet PCmdSetGet", "PReportStatus", kSwitchType);
    Get("PS");
    CloseClass("Property", "PSwitch");
}

void CatalogText::WriteText(const std::string& name) {
    OpenClass("class_text", "Property", "PText");
    Param("PT", name, 1, "PCmdSet", "PReportStatus", R"(<TString TypeRef="type_string" MaxSize="64"/>)");
    Get("PT");
    CloseClass("Property", "PText");
}

void CatalogText::WriteBits(const std::string& name) {
    std::string bits;
    const unsigned count = 2 + Below(14);
    for (unsigned bit = 0; bit < count; ++bit) {
        const std::string falseName = Name();
        const std::string trueName = Name();
        bits.append("<TBoolField BitPos=\"").append(std::to_string(bit)).append("\"><BitTrueDesc>");
        bits.append(trueName).append("</BitTrueDesc><BitFalseDesc>no ").append(falseName);
        bits.append("</BitFalseDesc></TBoolField>");
    }
    OpenClass("class_unclassified_property", "Property", "PUnclassified");
    Param("PU", name, 1, "PCmdSet", "PReportStatus",
          "<TBitField TypeRef=\"type_bitfield\" Length=\"" + std::to_string(count) + "\">" + bits +
              "</TBitField>");
    Get("PU");
    CloseClass("Property", "PUnclassified");
}

void CatalogText::WriteRecord(const std::string& name) {
    std::string fields;
    const unsigned count = 2 + Below(5);
    for (unsigned field = 1; field <= count; ++field) {
        const std::string number = std::to_string(field);
        const std::string type = field % 2 == 0 ? EnumType(5) : NumberType();
        fields.append("<TRecordField FieldIdx=\"").append(number).append("\"><TRecordFieldName>");
        fields.append(Name()).append(number).append(
            "</TRecordFieldName><TRecordFieldDesc/><TRecordFieldType>");
        fields.append(type).append("</TRecordFieldType></TRecordField>");
    }
    OpenClass("class_record", "Property", "PRecord");
    Param(
        "PR", "Pos", 1, "PCmdSet PCmdGet", "PReportStatus",
        R"(<TNumber><BasisDataType><TUWord TypeRef="type_unsigned_word"/></BasisDataType><Exponent>0</Exponent>)"
        R"(<RangeMin>0</RangeMin><RangeMax>65535</RangeMax><Step>1</Step><Unit UnitRef="unit_none"/></TNumber>)");
    Param("PR", "Data", 2, "PCmdSet", "PReportStatus",
          "<TRecord TypeRef=\"type_record\" NElements=\"" + std::to_string(count) + "\"><TRecordName>" +
              name + "</TRecordName><TRecordDesc/>" + fields + "</TRecord>");
    CloseClass("Property", "PRecord");
}

void CatalogText::WriteArray(const std::string& name) {
    const std::string type = NumberType();
    const std::string elementName = Name();
    const std::string length = std::to_string(1 + Below(20));
    OpenClass("class_array", "Property", "PArray");
    Param("PA", name, 1, "", "PReportStatus",
          "<TArray TypeRef=\"type_array\" NMax=\"" + length + "\"><TArrayName>" + elementName +
              "</TArrayName><TArrayDesc/><TArrayElementType>" + type + "</TArrayElementType></TArray>");
    Get("PA");
    CloseClass("Property", "PArray");
}

void CatalogText::WriteMethod(const std::string& name) {
    OpenClass("class_unclassified_method", "Method", "MUnclassified");
    Param("MU", "SenderHandle", 1, "MCmdStartResultAck", "MReportResultAck", NumberType());
    Param("MU", name, 2, "MCmdStartResultAck", "MReportResultAck", EnumType(6));
    Param("MU", "Result", 3, "", "MReportResultAck", NumberType());
    Param("MU", "ErrorCode", 1, "", "MReportErrorAck", EnumType(12));
    CloseClass("Method", "MUnclassified");
}

void CatalogText::WriteTrigger(const std::string& /*name*/) {
    OpenClass("class_trigger", "Method", "MTrigger");
    Param("MT", "", 0, "MCmdStart", "", kVoid);
    CloseClass("Method", "MTrigger");
}

/// Every parameter stands in all operations, so that each message and the whole database have the name often.
void CatalogText::WriteEqualNames() {
    OpenClass("class_unclassified_property", "Property", "PUnclassified");
    const unsigned count = 4 + Below(5);
    for (unsigned pos = 1; pos <= count; ++pos) {
        Param("PU", "Value", pos, "PCmdSet PCmdSetGet PCmdIncrement PCmdDecrement", "PReportStatus",
              Below(2) == 0 ? EnumType(4) : NumberType());
    }
    CloseClass("Property", "PUnclassified");
}

void CatalogText::WriteLargeEnumeration(const std::string& name) {
    const bool canBeSet = Below(2) == 0;
    OpenClass("class_enumeration", "Property", "PEnum");
    Param("PE", name, 1, canBeSet ? "PCmdSet" : "", "PReportStatus", EnumType(kLargeEnumeration, 65535));
    CloseClass("Property", "PEnum");
}

void CatalogText::WriteSmall(const std::string& name) {
    if (Below(2) == 0) {
        OpenClass("class_number", "Property", "PNumber");
        Param("PN", name, 1, "", "PReportStatus", NumberType());
        CloseClass("Property", "PNumber");
    } else {
        OpenClass("class_switch", "Property", "PSwitch");
        Param("PS", name, 1, "", "PReportStatus", kSwitchType);
        CloseClass("Property", "PSwitch");
    }
}

void CatalogText::WriteDefinition() {
    struct TypeRow {
        const char* id;
        const char* size;
    };
    constexpr TypeRow kTypes[] = {
        {"type_void", "0"},          {"type_unsigned_byte", "1"}, {"type_signed_byte", "1"},
        {"type_unsigned_word", "2"}, {"type_signed_word", "2"},   {"type_unsigned_long", "4"},
        {"type_signed_long", "4"},   {"type_enum", "1"},          {"type_boolean", "1"},
        {"type_bitfield", "2"},      {"type_string", "255"},      {"type_array", "4095"},
        {"type_record", "255"}};
    constexpr const char* kClasses[] = {"class_unclassified_property",
                                        "class_unclassified_method",
                                        "class_number",
                                        "class_enumeration",
                                        "class_switch",
                                        "class_text",
                                        "class_record",
                                        "class_array",
                                        "class_trigger"};
    Line(1, "<Definition>");
    for (const char* id : kClasses) {
        Line(2, std::string("<ClassDef ClassID=\"") + id + "\"><ClassName>" + id + "</ClassName></ClassDef>");
    }
    for (const char* id : {"PCmdSet", "PCmdGet", "PCmdSetGet", "PCmdIncrement", "PCmdDecrement"}) {
        Line(2,
             std::string("<PCmdDef PCmdID=\"") + id + "\"><PCmdName/><PCmdOPType>0</PCmdOPType></PCmdDef>");
    }
    for (const char* id : {"MCmdStart", "MCmdStartResult", "MCmdStartResultAck"}) {
        Line(2,
             std::string("<MCmdDef MCmdID=\"") + id + "\"><MCmdName/><MCmdOPType>0</MCmdOPType></MCmdDef>");
    }
    for (const char* id : {"PReportStatus", "PReportError"}) {
        Line(2, std::string("<PReportDef PReportID=\"") + id +
                    "\"><PReportName/><PReportOPType>0</PReportOPType></PReportDef>");
    }
    for (const char* id : {"MReportResult", "MReportResultAck", "MReportError", "MReportErrorAck"}) {
        Line(2, std::string("<MReportDef MReportID=\"") + id +
                    "\"><MReportName/><MReportOPType>0</MReportOPType></MReportDef>");
    }
    for (const TypeRow& type : kTypes) {
        Line(2, std::string("<TypeDef TypeID=\"") + type.id + "\"><TDefName>" + (type.id + 5) +
                    "</TDefName><TDefSize>" + type.size + "</TDefSize></TypeDef>");
    }
    for (const char* id : {"unit_none", "unit_km_h", "unit_ms", "unit_celsius"}) {
        Line(2, std::string("<UnitDef UnitID=\"") + id + "\"><UnitDefName>" + (id + 5) +
                    "</UnitDefName><UnitDefCode>0x50</UnitDefCode></UnitDef>");
    }
    Line(1, "</Definition>");
}

void CatalogText::OpenFunction(unsigned fktID, const std::string& name) {
    std::array<char, 96> id = {};
    std::snprintf(id.data(), id.size(), "<FunctionID FunctionSection=\"Extension\">0x%03X</FunctionID>",
                  fktID);
    Line(2, "<Function>");
    Line(3, id.data());
    Line(3, "<FunctionName>" + name + "</FunctionName>");
    Line(3, "<FunctionDescription>" + FunctionDescription() + "</FunctionDescription>");
    Line(3, "<FunctionVersion><Release>1.1</Release><Date>2023-05-09</Date></FunctionVersion>");
}

void CatalogText::OpenClass(std::string_view classRef, std::string_view kind, std::string_view element) {
    Line(3, "<FunctionClass ClassRef=\"" + std::string(classRef) + "\">");
    Line(4, "<FunctionClassDesc/>");
    Line(4, "<" + std::string(kind) + ">");
    Line(5, "<" + std::string(element) + ">");
}

void CatalogText::CloseClass(std::string_view kind, std::string_view element) {
    Line(5, "</" + std::string(element) + ">");
    Line(4, "</" + std::string(kind) + ">");
    Line(3, "</FunctionClass>");
    Line(2, "</Function>");
}

void CatalogText::Param(std::string_view letters, std::string_view name, unsigned pos,
                        std::string_view commands, std::string_view reports, std::string_view type) {
    const std::string prefix(letters);
    Line(6, "<" + prefix + "Param details=\"true\">");
    Line(7, "<ParamName ParamIdx=\"#NULL#\">" + std::string(name) + "</ParamName>");
    Line(7, "<ParamDescription>" + ParamDescription() + "</ParamDescription>");
    Line(7, "<" + prefix + "ParamOPType>");
    Operations(prefix + "Command", commands, pos);
    Operations(prefix + "Report", reports, pos);
    Line(7, "</" + prefix + "ParamOPType>");
    Line(7, "<" + prefix + "ParamType>");
    Line(8, type);
    Line(7, "</" + prefix + "ParamType>");
    Line(6, "</" + prefix + "Param>");
}

void CatalogText::Get(std::string_view letters) {
    Param(letters, "", 0, "PCmdGet", "", kVoid);
}

void CatalogText::Operations(std::string_view wrapper, std::string_view elements, unsigned pos) {
    if (elements.empty()) {
        return;
    }
    Line(8, "<" + std::string(wrapper) + ">");
    while (!elements.empty()) {
        const std::string element(elements.substr(0, elements.find(' ')));
        elements.remove_prefix(element.size() + (elements.size() > element.size() ? 1 : 0));
        std::string line = "<" + element;
        line.append(" OPTypeRef=\"").append(element).append("\"><ParamPos>").append(std::to_string(pos));
        line.append("</ParamPos></").append(element).append(">");
        Line(9, line);
    }
    Line(8, "</" + std::string(wrapper) + ">");
}

std::string CatalogText::NumberType() {
    struct Basis {
        const char* element;
        const char* type;
    };
    constexpr Basis kBases[] = {{"TUByte", "type_unsigned_byte"}, {"TSByte", "type_signed_byte"},
                                {"TUWord", "type_unsigned_word"}, {"TSWord", "type_signed_word"},
                                {"TULong", "type_unsigned_long"}, {"TSLong", "type_signed_long"}};
    constexpr const char* kUnits[] = {"unit_none", "unit_km_h", "unit_ms", "unit_celsius"};
    const Basis& basis = kBases[Below(std::size(kBases))];
    const char* unit = kUnits[Below(std::size(kUnits))];
    const std::string largest = std::to_string(Below(100000));
    const std::string exponent = std::to_string(static_cast<int>(Below(4)) - 2);
    return std::string("<TNumber><BasisDataType><") + basis.element + " TypeRef=\"" + basis.type +
           "\"/></BasisDataType><Exponent>" + exponent + "</Exponent><RangeMin>0</RangeMin><RangeMax>" +
           largest + "</RangeMax><Step>1</Step><Unit UnitRef=\"" + unit + "\"/></TNumber>";
}

std::string CatalogText::EnumType(unsigned values, unsigned largestCode) {
    std::array<char, 32> code = {};
    std::string type = "<TEnum TypeRef=\"type_enum\" TEnumMax=\"" + std::to_string(largestCode) + "\">";
    for (unsigned value = 0; value < values; ++value) {
        std::snprintf(code.data(), code.size(), "0x%02X", value);
        type += std::string("<TEnumValue Code=\"") + code.data() + "\">" + Name() + "</TEnumValue>";
    }
    return type + "</TEnum>";
}

std::string CatalogText::FunctionDescription() {
    if (plan_.shape == Shape::SmallFunctions) {
        return {};
    }
    if (plan_.shape != Shape::LongDescriptions) {
        return Words(1 + Below(10));
    }
    std::string text;
    while (text.size() < kLongDescription) {
        text += Words(1);
    }
    return text;
}

std::string CatalogText::ParamDescription() {
    return plan_.shape == Shape::SmallFunctions ? std::string() : Words(Below(4));
}

std::string CatalogText::Words(unsigned count) {
    std::string text;
    for (unsigned i = 0; i < count; ++i) {
        const std::size_t sentence = Below(std::size(kSentences));
        text += plan_.shape == Shape::Plain ? kPlainSentences[sentence] : kSentences[sentence];
    }
    return text;
}

std::string CatalogText::Name() {
    const char* second = kWords[Below(std::size(kWords))];
    return std::string(kWords[Below(std::size(kWords))]) + second;
}

void CatalogText::Put(std::string_view text) {
    written_ += std::fwrite(text.data(), 1, text.size(), out_);
}

void CatalogText::Line(unsigned indent, std::string_view text) {
    if (plan_.shape != Shape::SmallFunctions) {
        Put(std::string(std::size_t{2} * indent, ' '));
    }
    Put(text);
    Put("\n");
}

}  // namespace tarvex::bench
