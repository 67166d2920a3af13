/// One change of a catalog is one line, whichever way it is compared.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "review/diff_catalogs.h"

namespace tarvex::test::diff_test {
namespace {

using namespace diff;
using namespace review;
using testing::ElementsAre;

using ReviewDiff = DiffTest;

/// One change of the base catalog each. `there` and `back`: the only line, and that with the roles swapped.
struct Row {
    const char* from;
    const char* to;
    const char* there;
    const char* back;
};

constexpr Row kRows[] = {
    // Blocks.
    {"<FBlockName>Tuner<", "<FBlockName>Radio<",  //
     "Radio (40): block renamed Tuner -> Radio", "Tuner (40): block renamed Radio -> Tuner"},
    {"<FBlockID>0x40<", "<FBlockID>0x41<",  //
     "Tuner (41): block moved 40 -> 41 (bytes)", "Tuner (40): block moved 41 -> 40 (bytes)"},
    // Functions.
    {"<FunctionName>Volume<", "<FunctionName>Loudness<",
     "Amp (22) Loudness (400): function renamed Volume -> Loudness",
     "Amp (22) Volume (400): function renamed Loudness -> Volume"},
    {"<FunctionID>0x401<", "<FunctionID>0x501<", "Amp (22) Balance (501): function moved 401 -> 501 (bytes)",
     "Amp (22) Balance (401): function moved 501 -> 401 (bytes)"},
    // Operations.
    {"<PCmdGet/>", "<PCmdGet/><PCmdDecrement/>",
     "Amp (22) Volume (400): operation Decrement added: no parameters (bytes)",
     "Amp (22) Volume (400): operation Decrement removed: no parameters (bytes)"},
    // Parameters: there, in an operation, names, places.
    {"<ParamName>Picture<", "<ParamName>Image<",
     "Amp (22) Streams (403): Image renamed Picture -> Image [Status]",
     "Amp (22) Streams (403): Picture renamed Image -> Picture [Status]"},
    {"<PCmdIncrement><ParamPos>1</ParamPos></PCmdIncrement>",
     "<PCmdIncrement><ParamPos>1</ParamPos></PCmdIncrement><PCmdSet><ParamPos>3</ParamPos></PCmdSet>",
     "Amp (22) Volume (400): Steps added: signed number, 1 byte [Set] (bytes)",
     "Amp (22) Volume (400): Steps removed: signed number, 1 byte [Set] (bytes)"},
    // Numbers.
    {"<RangeMax>30<", "<RangeMax>63<",  //
     "Amp (22) Volume (400): Level range 0..30 -> 0..63 [Set, Status]",
     "Amp (22) Volume (400): Level range 0..63 -> 0..30 [Set, Status]"},
    {"<RangeMin>0</RangeMin><RangeMax>30</RangeMax>", "",
     "Amp (22) Volume (400): Level range 0..30 -> none [Set, Status]",
     "Amp (22) Volume (400): Level range none -> 0..30 [Set, Status]"},
    {"<Exponent>0</Exponent><RangeMin>-5<", "<Exponent>-1</Exponent><RangeMin>-5<",
     "Amp (22) Balance (401): Side exponent 0 -> -1 [Status] (meaning)",
     "Amp (22) Balance (401): Side exponent -1 -> 0 [Status] (meaning)"},
    {"<RangeMax>5</RangeMax><Step>1<", "<RangeMax>5</RangeMax><Step>0.5<",
     "Amp (22) Balance (401): Side step 1 -> 0.5 [Status]",
     "Amp (22) Balance (401): Side step 0.5 -> 1 [Status]"},
    {"UnitRef=\"unit_km_h\"", "UnitRef=\"unit_none\"",
     "Amp (22) Balance (401): Side unit km/h -> none [Status] (meaning)",
     "Amp (22) Balance (401): Side unit none -> km/h [Status] (meaning)"},
    {"type_signed_word\"/></BasisDataType><Exponent>0</Exponent><RangeMin>-5",
     "type_unsigned_word\"/></BasisDataType><Exponent>0</Exponent><RangeMin>-5",
     "Amp (22) Balance (401): Side type signed number -> unsigned number [Status] (meaning)",
     "Amp (22) Balance (401): Side type unsigned number -> signed number [Status] (meaning)"},
    {"type_signed_word\"/></BasisDataType><Exponent>0</Exponent><RangeMin>-5",
     "type_signed_long\"/></BasisDataType><Exponent>0</Exponent><RangeMin>-5",
     "Amp (22) Balance (401): Side length 2 bytes -> 4 bytes [Status] (bytes)",
     "Amp (22) Balance (401): Side length 4 bytes -> 2 bytes [Status] (bytes)"},
    // Enumerations.
    {"TEnumMax=\"9\"", "TEnumMax=\"300\"",
     "Amp (22) Volume (400): Source length 1 byte -> 2 bytes [Set, Status] (bytes)",
     "Amp (22) Volume (400): Source length 2 bytes -> 1 byte [Set, Status] (bytes)"},
    {"<TEnumValue Code=\"2\">Disc</TEnumValue>",
     "<TEnumValue Code=\"2\">Disc</TEnumValue><TEnumValue Code=\"3..5\">Aux</TEnumValue>",
     "Amp (22) Volume (400): Source value 0x03..0x05 Aux added [Set, Status]",
     "Amp (22) Volume (400): Source value 0x03..0x05 Aux removed [Set, Status]"},
    {"<TEnumValue Code=\"2\">Disc<", "<TEnumValue Code=\"2\">Tape<",
     "Amp (22) Volume (400): Source value 0x02 renamed Disc -> Tape [Set, Status] (meaning)",
     "Amp (22) Volume (400): Source value 0x02 renamed Tape -> Disc [Set, Status] (meaning)"},
    {"<TEnumValue Code=\"2\">Disc<", "<TEnumValue Code=\"4\">Disc<",
     "Amp (22) Volume (400): Source value Disc moved 0x02 -> 0x04 [Set, Status] (meaning)",
     "Amp (22) Volume (400): Source value Disc moved 0x04 -> 0x02 [Set, Status] (meaning)"},
    // Bits.
    {"Length=\"6\"", "Length=\"10\"",
     "Amp (22) Balance (401): Flags length 1 byte, 6 bits used -> 2 bytes, 10 bits used [Status] (bytes)",
     "Amp (22) Balance (401): Flags length 2 bytes, 10 bits used -> 1 byte, 6 bits used [Status] (bytes)"},
    {"Length=\"6\"", "Length=\"8\"",
     "Amp (22) Balance (401): Flags length 1 byte, 6 bits used -> 1 byte, 8 bits used [Status]",
     "Amp (22) Balance (401): Flags length 1 byte, 8 bits used -> 1 byte, 6 bits used [Status]"},
    {"<TBoolField BitPos=\"0\"><ParamName>Mute<", "<TBoolField BitPos=\"0\"><ParamName>Quiet<",
     "Amp (22) Balance (401): Flags bit 0 Quiet renamed Mute -> Quiet [Status] (meaning)",
     "Amp (22) Balance (401): Flags bit 0 Mute renamed Quiet -> Mute [Status] (meaning)"},
    {"<BitTrueDesc>hot<", "<BitTrueDesc>warm<",
     "Amp (22) Balance (401): Flags bit 3 texts hot / cold -> warm / cold [Status] (meaning)",
     "Amp (22) Balance (401): Flags bit 3 texts warm / cold -> hot / cold [Status] (meaning)"},
    {"BitPos=\"3\"", "BitPos=\"2\"", "Amp (22) Balance (401): Flags bit 2 moved 3 -> 2 [Status] (bytes)",
     "Amp (22) Balance (401): Flags bit 3 moved 2 -> 3 [Status] (bytes)"},
    {"<TBoolField BitPos=\"3\">",
     "<TBoolField BitPos=\"1\"><BitTrueDesc>a</BitTrueDesc><BitFalseDesc>b</BitFalseDesc></TBoolField>"
     "<TBoolField BitPos=\"3\">",
     "Amp (22) Balance (401): Flags bit 1 added: a / b [Status]",
     "Amp (22) Balance (401): Flags bit 1 removed: a / b [Status]"},
    // Letters that databases do not take.
    {"<TEnumValue Code=\"2\">Disc<", "<TEnumValue Code=\"2\">Disc+<",
     "Amp (22) Volume (400): Source value 0x02 renamed Disc -> Disc+ [Set, Status] (meaning)",
     "Amp (22) Volume (400): Source value 0x02 renamed Disc+ -> Disc [Set, Status] (meaning)"},
    {"<BitTrueDesc>hot<", "<BitTrueDesc>&gt;hot<",
     "Amp (22) Balance (401): Flags bit 3 texts hot / cold -> >hot / cold [Status] (meaning)",
     "Amp (22) Balance (401): Flags bit 3 texts >hot / cold -> hot / cold [Status] (meaning)"},
    {"<TBoolField BitPos=\"0\"><ParamName>Mute<", "<TBoolField BitPos=\"0\"><ParamName>Mute!<",
     "Amp (22) Balance (401): Flags bit 0 Mute! renamed Mute -> Mute! [Status] (meaning)",
     "Amp (22) Balance (401): Flags bit 0 Mute renamed Mute! -> Mute [Status] (meaning)"},
    {"<ParamName>Picture<", "<ParamName>Pictüre<",
     "Amp (22) Streams (403): Pictre renamed Picture -> Pictüre [Status]",
     "Amp (22) Streams (403): Picture renamed Pictüre -> Picture [Status]"},
    {"<TRecordFieldName>Gain<", "<TRecordFieldName>Gain+<",
     "Amp (22) Titles (402): Setup.Gain renamed Gain -> Gain+ [Status]",
     "Amp (22) Titles (402): Setup.Gain renamed Gain+ -> Gain [Status]"},
    {"<SignalName SignalIdx=\"1\">Power<", "<SignalName SignalIdx=\"1\">Power+<",
     "Amp (22) Streams (403): Data(PosX=Kind, PosY=0x02..0x04).Power renamed Power -> Power+ [Status]",
     "Amp (22) Streams (403): Data(PosX=Kind, PosY=0x02..0x04).Power renamed Power+ -> Power [Status]"},
    {"<TArrayName>Entry<", "<TArrayName>Entry.<",
     "Amp (22) Titles (402): List.Entry renamed Entry -> Entry. [Status]",
     "Amp (22) Titles (402): List.Entry renamed Entry. -> Entry [Status]"},
    {"<FunctionName>Volume<", "<FunctionName>Volume+<",
     "Amp (22) Volume (400): function renamed Volume -> Volume+",
     "Amp (22) Volume (400): function renamed Volume+ -> Volume"},
    {"<FBlockName>Tuner<", "<FBlockName>Tuner &amp;<", "Tuner_ (40): block renamed Tuner -> Tuner &",
     "Tuner (40): block renamed Tuner & -> Tuner"},
    // Records, arrays and strings, also inside.
    {"MaxSize=\"20\"", "MaxSize=\"21\"",
     "Amp (22) Titles (402): Setup.Title limit at most 20 bytes -> at most 21 bytes [Status]",
     "Amp (22) Titles (402): Setup.Title limit at most 21 bytes -> at most 20 bytes [Status]"},
    {"<TRecordFieldName>Gain<", "<TRecordFieldName>Boost<",
     "Amp (22) Titles (402): Setup.Boost renamed Gain -> Boost [Status]",
     "Amp (22) Titles (402): Setup.Gain renamed Boost -> Gain [Status]"},
    {"<TString TypeRef=\"type_string\" MaxSize=\"20\"/>", "<TBool TypeRef=\"type_bool\"/>",
     "Amp (22) Titles (402): Setup.Title type string, open, at most 20 bytes -> boolean, 1 byte, 8 bits used "
     "[Status] (bytes)",
     "Amp (22) Titles (402): Setup.Title type boolean, 1 byte, 8 bits used -> string, open, at most 20 bytes "
     "[Status] (bytes)"},
    {"NMax=\"10\"", "NMax=\"NMax\"", "Amp (22) Titles (402): List limit at most 10 elements -> none [Status]",
     "Amp (22) Titles (402): List limit none -> at most 10 elements [Status]"},
    {"MaxSize=\"64\"", "MaxSize=\"65\"",
     "Amp (22) Titles (402): List.Entry limit at most 64 bytes -> at most 65 bytes [Status]",
     "Amp (22) Titles (402): List.Entry limit at most 65 bytes -> at most 64 bytes [Status]"},
    // Streams.
    {"PosY=\"2..4\"", "PosY=\"2..5\"",
     "Amp (22) Streams (403): Data case PosX=Kind, PosY=0x02..0x05 moved PosX=Kind, PosY=0x02..0x04 -> "
     "PosX=Kind, PosY=0x02..0x05 [Status] (bytes)",
     "Amp (22) Streams (403): Data case PosX=Kind, PosY=0x02..0x04 moved PosX=Kind, PosY=0x02..0x05 -> "
     "PosX=Kind, PosY=0x02..0x04 [Status] (bytes)"},
    {"</TStream>", "<StreamCase><PosDescription PosX=\"Kind\" PosY=\"9\"/></StreamCase></TStream>",
     "Amp (22) Streams (403): Data case PosX=Kind, PosY=0x09 added [Status] (bytes)",
     "Amp (22) Streams (403): Data case PosX=Kind, PosY=0x09 removed [Status] (bytes)"},
    {"<SignalBitLength>12<", "<SignalBitLength>4<",
     "Amp (22) Streams (403): Data(PosX=Kind, PosY=0x02..0x04).Power length 12 bits -> 4 bits [Status] "
     "(bytes)",
     "Amp (22) Streams (403): Data(PosX=Kind, PosY=0x02..0x04).Power length 4 bits -> 12 bits [Status] "
     "(bytes)"},
    {"MediaType=\"image/png\"", "MediaType=\"image/gif\"",
     "Amp (22) Streams (403): Picture media type image/png -> image/gif [Status]",
     "Amp (22) Streams (403): Picture media type image/gif -> image/png [Status]"},
    {"<TStream TypeRef=\"type_stream\" Length=\"7\">", "<TStream TypeRef=\"type_stream\" Length=\"9\">",
     "Amp (22) Streams (403): Data limit at most 7 bytes -> at most 9 bytes [Status]",
     "Amp (22) Streams (403): Data limit at most 9 bytes -> at most 7 bytes [Status]"},
};

TEST_F(ReviewDiff, OneChangeIsOneLineAndItsOppositeTheOtherWayRound) {
    const auto before = Read(BaseCatalog());
    for (const Row& row : kRows) {
        const auto after = Read(Replaced(BaseCatalog(), row.from, row.to));
        ASSERT_NE(after->Catalog(), nullptr) << row.there;
        EXPECT_THAT(Lines(*before, *after), ElementsAre(row.there));
        EXPECT_THAT(Lines(*after, *before), ElementsAre(row.back));
    }
}

}  // namespace
}  // namespace tarvex::test::diff_test
