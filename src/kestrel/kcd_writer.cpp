#include "kestrel/kcd_writer.h"

#include <libxml/xmlwriter.h>
#include <map>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "kestrel/atomic_file.h"
#include "kestrel/database.h"
#include "kestrel/json_text.h"
#include "kestrel/model_text.h"
#include "kestrel/most_columns.h"

namespace kestrel {

namespace {

constexpr const char* kNamespace = "http://kayak.2codeornot2code.org/1.0";

/// Identifiers above this one only fit the extended format.
constexpr std::uint32_t kLargestStandardIdentifier = 0x7FF;

constexpr std::uint32_t kLargestExtendedIdentifier = 0x1FFFFFFF;

constexpr unsigned kBitsPerByte = 8;

/// What KCD gives as the position of a signal: of a big-endian one that of its most significant bit, counted
/// from the most significant bit of byte 0.
unsigned Offset(const sigblk& signal) {
    if ((signal.flags & kSignalBigEndian) == 0) {
        return signal.start_bit;
    }
    return signal.start_bit / kBitsPerByte * kBitsPerByte + (kBitsPerByte - 1) -
           signal.start_bit % kBitsPerByte;
}

/// The same for a multiplexor, which counts from its least significant bit. A big-endian one that goes on
/// into the next byte has no such position; it keeps that of its first bit.
unsigned MultiplexOffset(const sigblk& signal) {
    const bool isBig = (signal.flags & kSignalBigEndian) != 0;
    const bool fitsInByte = signal.length > 0 && signal.start_bit % kBitsPerByte + 1U >= signal.length;
    return isBig && fitsInByte ? signal.start_bit - (signal.length - 1U) : signal.start_bit;
}

/// XML has no way to write control characters, nor U+FFFE and U+FFFF.
std::string XmlText(std::string text) {
    for (char& c : text) {
        if (static_cast<unsigned char>(c) < ' ' && c != '\n' && c != '\t') {
            c = '?';
        }
    }
    for (const std::string_view refused : {"\xEF\xBF\xBE", "\xEF\xBF\xBF"}) {
        for (std::size_t at = text.find(refused); at != std::string::npos; at = text.find(refused, at)) {
            text.replace(at, refused.size(), "?");
        }
    }
    return text;
}

/// Writes elements. A text that the library refuses, or a failed write, is noted and ends nothing.
class XmlWriter {
  public:
    explicit XmlWriter(AtomicFile& file) : file_(file) {
        xmlOutputBufferPtr buffer = xmlOutputBufferCreateIO(&XmlWriter::Append, nullptr, &file, nullptr);
        writer_.reset(buffer == nullptr ? nullptr : xmlNewTextWriter(buffer));
        if (writer_ == nullptr) {
            if (buffer != nullptr) {
                xmlOutputBufferClose(buffer);
            }
            throw std::bad_alloc();
        }
        xmlTextWriterSetIndent(writer_.get(), 1);
        Check(xmlTextWriterSetIndentString(writer_.get(), Xml("  ")));
        Check(xmlTextWriterStartDocument(writer_.get(), nullptr, "UTF-8", nullptr));
    }

    void Start(const char* name) { Check(xmlTextWriterStartElement(writer_.get(), Xml(name))); }
    void End() { Check(xmlTextWriterEndElement(writer_.get())); }
    void Attribute(const char* name, const std::string& value) {
        Check(xmlTextWriterWriteAttribute(writer_.get(), Xml(name), Xml(XmlText(value).c_str())));
    }
    void Attribute(const char* name, unsigned value) { Attribute(name, std::to_string(value)); }
    void Attribute(const char* name, double value) {
        std::string text;
        AppendShortNumber(text, value);
        Attribute(name, text);
    }
    void Element(const char* name, const std::string& text) {
        Check(xmlTextWriterWriteElement(writer_.get(), Xml(name), Xml(XmlText(text).c_str())));
    }
    void EndDocument() {
        Check(xmlTextWriterEndDocument(writer_.get()));
        Check(xmlTextWriterFlush(writer_.get()));
    }

  private:
    static const xmlChar* Xml(const char* text) { return reinterpret_cast<const xmlChar*>(text); }
    static int Append(void* file, const char* text, int size) {
        static_cast<AtomicFile*>(file)->Append({text, static_cast<std::size_t>(size)});
        return size;
    }
    void Check(int result) {
        if (result < 0) {
            file_.Fail();
        }
    }

    struct Deleter {
        void operator()(xmlTextWriterPtr writer) const { xmlFreeTextWriter(writer); }
    };
    AtomicFile& file_;
    std::unique_ptr<xmlTextWriter, Deleter> writer_;
};

class KcdWriter {
  public:
    KcdWriter(const Database& database, AtomicFile& file) : database_(database), xml_(file), file_(file) {
        for (const AttrDef& definition : database.AttrDefs()) {
            choices_.push_back(ChoiceNames(definition));
        }
    }

    void Write() {
        xml_.Start("NetworkDefinition");
        xml_.Attribute("xmlns", kNamespace);
        xml_.Start("Document");
        xml_.Attribute("name", Text(database_.Name()));
        xml_.End();
        unsigned id = 0;
        for (const Node& node : database_.Nodes()) {
            nodeIds_.emplace(&node, ++id);
            xml_.Start("Node");
            xml_.Attribute("id", id);
            xml_.Attribute("name", NameText(node.name));
            AddNotes(node.attributes);
            xml_.End();
        }
        xml_.Start("Bus");
        xml_.Attribute("name", Text(database_.Name()));
        AddNotes(database_.Attributes());
        for (const Message& message : database_.Messages()) {
            AddMessage(message);
            if (file_.Failed()) {
                return;
            }
        }
        xml_.End();
        xml_.End();
        xml_.EndDocument();
    }

  private:
    void AddNotes(const AttrValues& attributes) {
        std::string notes;
        for (const AttrValues::Value& entry : attributes.Values()) {
            if (!notes.empty()) {
                notes += '\n';
            }
            notes += NameText(entry.definition->name) + " = " +
                     ValueText(*entry.definition, choices_[entry.definition->position], entry.value);
        }
        // Readers stumble over notes that are empty.
        if (!notes.empty()) {
            xml_.Element("Notes", notes);
        }
    }

    void AddMessage(const Message& message) {
        const std::uint32_t identifier = message.identifier & ~kExtendedIdentifier;
        if (identifier > kLargestExtendedIdentifier) {
            return;  // readers would refuse the whole file
        }
        const bool isExtended = identifier != message.identifier || identifier > kLargestStandardIdentifier;
        xml_.Start("Message");
        xml_.Attribute("id", HexadecimalText(identifier));
        xml_.Attribute("name", NameText(message.name));
        xml_.Attribute("length", unsigned{message.length});
        xml_.Attribute("format", std::string(isExtended ? "extended" : "standard"));
        AddNotes(message.attributes);
        const auto node = nodeIds_.find(message.node);
        if (node != nodeIds_.end()) {
            xml_.Start("Producer");
            xml_.Start("NodeRef");
            xml_.Attribute("id", node->second);
            xml_.End();
            xml_.End();
        }
        AddSignals(message);
        xml_.End();
    }

    void AddSignals(const Message& message) {
        const Signal* multiplexor = nullptr;
        for (const Signal* signal = message.firstSignal; signal != nullptr; signal = signal->next) {
            if (multiplexor == nullptr && (signal->flags & kSignalMultiplexor) != 0) {
                multiplexor = signal;
            }
        }
        if (multiplexor != nullptr) {
            AddMultiplex(message, *multiplexor);
        }
        for (const Signal* signal = message.firstSignal; signal != nullptr; signal = signal->next) {
            const bool isInGroup = multiplexor != nullptr && (signal->flags & kSignalMultiplexed) != 0;
            if (signal != multiplexor && !isInGroup) {
                AddSignal(*signal);
            }
        }
    }

    void AddMultiplex(const Message& message, const Signal& multiplexor) {
        std::map<std::uint32_t, std::vector<const Signal*>> groups;
        for (const Signal* signal = message.firstSignal; signal != nullptr; signal = signal->next) {
            if (signal != &multiplexor && (signal->flags & kSignalMultiplexed) != 0) {
                groups[signal->multiplexer_value].push_back(signal);
            }
        }
        xml_.Start("Multiplex");
        AddLayout(multiplexor, true);
        for (const auto& [value, signals] : groups) {
            xml_.Start("MuxGroup");
            xml_.Attribute("count", value);
            for (const Signal* signal : signals) {
                AddSignal(*signal);
            }
            xml_.End();
        }
        xml_.End();
    }

    void AddSignal(const Signal& signal) {
        xml_.Start("Signal");
        AddLayout(signal, false);
        xml_.End();
    }

    /// What signals and multiplexors have in common.
    void AddLayout(const Signal& signal, bool isMultiplex) {
        xml_.Attribute("name", NameText(signal.name));
        xml_.Attribute("offset", isMultiplex ? MultiplexOffset(signal) : Offset(signal));
        xml_.Attribute("length", unsigned{signal.length});
        // Readers take every multiplexor as little-endian.
        if (!isMultiplex) {
            const bool isBig = (signal.flags & kSignalBigEndian) != 0;
            xml_.Attribute("endianess", std::string(isBig ? "big" : "little"));
        }
        AddValue(signal);
        if (signal.value_descriptions == nullptr) {
            return;
        }
        xml_.Start("LabelSet");
        for (const valdesc* entry = signal.value_descriptions; entry != nullptr; entry = entry->next) {
            xml_.Start("Label");
            xml_.Attribute("name", NameText(entry->text));
            xml_.Attribute("value", entry->value);
            xml_.End();
        }
        xml_.End();
    }

    /// Sign and scaling, of a signal that has either.
    void AddValue(const Signal& signal) {
        const bool isSigned = (signal.flags & kSignalSigned) != 0;
        if (!isSigned && signal.scaling == nullptr) {
            return;
        }
        xml_.Start("Value");
        if (isSigned) {
            xml_.Attribute("type", std::string("signed"));
        }
        if (signal.scaling != nullptr) {
            xml_.Attribute("slope", signal.scaling->factor);
            if (!signal.scaling->unit.empty()) {
                xml_.Attribute("unit", signal.scaling->unit);
            }
            if (signal.scaling->minimum) {
                xml_.Attribute("min", *signal.scaling->minimum);
            }
            if (signal.scaling->maximum) {
                xml_.Attribute("max", *signal.scaling->maximum);
            }
        }
        xml_.End();
    }

    const Database& database_;
    XmlWriter xml_;
    AtomicFile& file_;
    /// The names of enumeration values, by the positions of the definitions.
    std::vector<std::vector<std::string>> choices_;
    std::unordered_map<const symblk*, unsigned> nodeIds_;
};

}  // namespace

void WriteKcd(const Database& database, AtomicFile& file) {
    KcdWriter(database, file).Write();
}

}  // namespace kestrel
