/// Messages of small catalogs, decoded.

#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "disasm/decoded_message.h"
#include "support/catalog_import.h"

namespace tarvex::test {

/// A "TNumber" of a type definition; the exponent and the unit as a catalog writes them.
std::string Number(std::string_view type, std::string_view exponent = "0",
                   std::string_view unit = "unit_none");
/// A "TString" of at most so many characters.
std::string Text(std::string_view maxSize);
/// A "TBitField" of so many bits, with these "TBoolField" elements.
std::string Bits(int length, std::string_view bits = "");
/// A "TArray" of at most so many elements of that name and type.
std::string Array(std::string_view nMax, std::string_view elementName, std::string_view type);
/// A "TRecord" with fields in this order, each of a name and a type.
struct FieldOf {
    std::string name;
    std::string type;
};
std::string Record(const std::vector<FieldOf>& fields);
/// A "TStream" with these cases.
std::string Stream(std::string_view cases);
/// A "StreamCase" of that PosX and PosY, with parameters that have these "ParamIdx", names and types.
struct StreamParamOf {
    std::string idx;
    std::string name;
    std::string type;
};
std::string Case(std::string_view posX, std::string_view posY, const std::vector<StreamParamOf>& params);

extern const std::string kUByte;
extern const std::string kSByte;
extern const std::string kUWord;
extern const std::string kULong;
extern const std::string kVoid;
/// Codes 0 "Off", 1 "On" and 2 "Auto".
extern const std::string kSwitch;

/// The parameters, in this order, of the "Status" of a property.
struct ParamOf {
    std::string name;
    std::string type;
};

/// The data bytes that stand in a text of hexadecimal digits and blanks.
std::vector<std::uint8_t> BytesOf(std::string_view hex);

/// A catalog, and messages of it.
class Decoding {
  public:
    /// The message 22.01.400.C, "Amp.Volume.Status", with these parameters.
    explicit Decoding(const std::vector<ParamOf>& params, bool readNewer = false);
    /// A whole catalog.
    explicit Decoding(const std::string& catalogXml, bool readNewer = false);

    /// A message with these data bytes, 22.01.400.C unless another one is given.
    std::unique_ptr<DecodedMessage> Decode(std::string_view hex) const;
    std::unique_ptr<DecodedMessage> Decode(const CapturedMessage& message) const;
    /// What `Shown` makes of the message.
    std::string Shown(std::string_view hex) const;

    const Imported& Import() const { return *imported_; }

  private:
    std::unique_ptr<Imported> imported_;
};

/// The items of a message in one line, and its faults behind them: "Level@0+1=5 List@1+2=<[1]Entry@1+2=7>
/// !byte 3: 1 byte left over". "@" is the offset, "+" the number of bytes; members stand in "<>".
std::string Shown(const DecodedMessage& decoded);

/// The items of a list and those inside them.
std::size_t CountItems(const ZMostParameterListBaseInfo& items);

}  // namespace tarvex::test
