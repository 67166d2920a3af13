#include "sample.h"

namespace vorn::test {

using kestrel::DatabaseBuilder;
using kestrel::DefinitionRecord;

namespace {

void SetAttributes(DatabaseBuilder& builder, kestrel::AttrValues& values, AttrObject object,
                   const AttributeRows& rows) {
    for (const auto& [name, value] : rows) {
        builder.SetAttribute(values, object, name, value);
    }
}

void AddMessage(DatabaseBuilder& builder, const MessageRow& row) {
    kestrel::Message& message =
        builder.AddMessage({.identifier = row.identifier & ~kExtendedIdentifier,
                            .extended = (row.identifier & kExtendedIdentifier) != 0,
                            .name = row.name,
                            .length = row.length,
                            .node = row.node.empty() ? nullptr : &builder.FindNode(row.node)});
    SetAttributes(builder, message.attributes, AttrObject::Message, row.attributes);
    for (const SignalRow& signalRow : row.signals) {
        kestrel::SignalRecord record;
        record.name = signalRow.name;
        record.startBit = signalRow.startBit;
        record.length = signalRow.length;
        record.byteOrder = (signalRow.flags & kBig) != 0 ? "big_endian" : "little_endian";
        record.isSigned = (signalRow.flags & kSigned) != 0;
        record.isMultiplexor = (signalRow.flags & kSelector) != 0;
        if ((signalRow.flags & kSelected) != 0) {
            record.multiplexerValue = signalRow.multiplexerValue;
        }
        kestrel::Signal& signal = builder.AddSignal(message, record);
        for (const auto& [value, text] : signalRow.values) {
            builder.AddValue(signal, value, text);
        }
        if (signalRow.scaling) {
            builder.SetScaling(signal, *signalRow.scaling);
        }
    }
}

}  // namespace

DefinitionRecord Integer(const char* object, const char* name, double minimum, double maximum,
                         double defaultNumber) {
    DefinitionRecord record;
    record.object = object;
    record.name = name;
    record.type = "integer";
    record.minimum = minimum;
    record.maximum = maximum;
    record.defaultNumber = defaultNumber;
    return record;
}

DefinitionRecord String(const char* object, const char* name, const char* defaultText) {
    DefinitionRecord record;
    record.object = object;
    record.name = name;
    record.type = "string";
    record.defaultText = defaultText;
    return record;
}

DefinitionRecord Enumeration(const char* object, const char* name, std::vector<std::string> choices,
                             const char* defaultText) {
    DefinitionRecord record = String(object, name, defaultText);
    record.type = "enumeration";
    record.choices = std::move(choices);
    return record;
}

std::unique_ptr<kestrel::Database> Build(const Sample& sample) {
    DatabaseBuilder builder;
    builder.SetName(sample.name);
    for (const DefinitionRecord& definition : sample.definitions) {
        builder.AddDefinition(definition);
    }
    SetAttributes(builder, builder.Built().Attributes(), AttrObject::Database, sample.attributes);
    for (const NodeRow& row : sample.nodes) {
        SetAttributes(builder, builder.AddNode(row.name).attributes, AttrObject::Node, row.attributes);
    }
    for (const MessageRow& row : sample.messages) {
        AddMessage(builder, row);
    }
    return builder.Take();
}

std::unique_ptr<kestrel::Database> BuildMessage(std::uint16_t length, std::vector<SignalRow> signals) {
    Sample sample;
    sample.messages.push_back(
        {.identifier = 0x10, .name = "Msg", .length = length, .signals = std::move(signals)});
    return Build(sample);
}

}  // namespace vorn::test
