/// Lines of names and values: what they become, and what is wrong with others.

#include <string>

#include <gtest/gtest.h>

#include "asm/assembly.h"
#include "disasm/json_report.h"
#include "disasm/text_report.h"

namespace tarvex::test::assembler_test {
namespace {

std::string Ranged(std::string_view type, std::string_view exponent, std::string_view min,
                   std::string_view max, std::string_view step) {
    std::string xml = "<TNumber><BasisDataType><TULong TypeRef=\"";
    xml.append(type)
        .append("\"/></BasisDataType><Exponent>")
        .append(exponent)
        .append("</Exponent><RangeMin>");
    xml.append(min).append("</RangeMin><RangeMax>").append(max).append("</RangeMax><Step>").append(step);
    return xml + R"(</Step><Unit UnitRef="unit_km_h"/></TNumber>)";
}

std::string Bit(int pos, const std::string& name) {
    return "<TBoolField BitPos=\"" + std::to_string(pos) + "\"><ParamName>" + name +
           "</ParamName><BitTrueDesc>open</BitTrueDesc><BitFalseDesc>closed</BitFalseDesc></TBoolField>";
}

struct Row {
    std::vector<ParamOf> params;
    const char* values;
    const char* bytes;
};

const std::vector<Row>& Rows() {
    static const std::string signedWord = Ranged("type_signed_word", "-1", "0", "0", "0.1");
    static const std::string flags = Bits(10, Bit(0, "Lid") + Bit(9, "Door"));
    static const std::string turned =
        Bits(3,
             "<TBoolField BitPos=\"1\"><ParamName>Lid</ParamName><BitTrueDesc>0</BitTrueDesc>"
             "<BitFalseDesc>1</BitFalseDesc></TBoolField>");
    static const std::string text = Text("5");
    static const std::string pair = Record({{"a", kUByte}, {"b", kUWord}});
    static const std::string body = Stream(Case("Mode", "1", {{"1", "A", kUByte}}) +
                                           Case("Mode", "2", {{"1", "B", kUWord}, {"2", "T", Text("9")}}));
    static const std::vector<Row> rows = {
        // Numbers.
        {{{"N", kUByte}}, "N=5", "05"},
        {{{"N", kUByte}}, "n = 5", "05"},
        {{{"N", kUByte}}, "N=0xFF", "FF"},
        {{{"N", kSByte}}, "N=-128", "80"},
        {{{"N", signedWord}}, "N=12.5", "00 7D"},
        {{{"N", signedWord}}, "N=-0.1 km/h", "FF FF"},
        {{{"N", signedWord}}, "N=\"12.5 km/h\"", "00 7D"},
        {{{"N", signedWord}}, "N=1.25e+1", "00 7D"},
        {{{"N", signedWord}}, "N=12.500", "00 7D"},
        {{{"N", signedWord}}, "N=1e1", "00 64"},
        {{{"N", signedWord}}, "N=125E-1 km/h", "00 7D"},
        {{{"N", Number("type_unsigned_word", "3")}}, "N=7000", "00 07"},
        {{{"N", kUByte}, {"M", kUWord}}, "M=2 N=1 # the order is the catalog's", "01 00 02"},
        {{{"N", kUWord}}, "N=hex:01FF", "01 FF"},
        // Codes.
        {{{"E", kSwitch}}, "E=On", "01"},
        {{{"E", kSwitch}}, "E=auto", "02"},
        {{{"E", kSwitch}}, "E=2", "02"},
        {{{"E", kSwitch}}, "E=0x09", "09"},
        {{{"E", kSwitch}}, "E=On (0x01)", "01"},
        // Bits.
        {{{"F", flags}}, "F=0x0201", "02 01"},
        {{{"F", flags}}, "F={Lid=open,Door=closed}", "00 01"},
        {{{"F", flags}}, "F={Door=on,bit3=1,bit0=off}", "02 08"},
        {{{"F", flags}}, "F={}", "00 00"},
        {{{"F", Bits(3, Bit(1, "Lid"))}}, "F=open", "02"},
        {{{"F", turned}}, "F={Lid=0}", "00"},
        {{{"F", turned}}, "F={Lid=1,bit2=0}", "02"},
        {{{"F", turned}}, "F={Lid=\"0\"}", "02"},
        {{{"F", turned}}, "F=1", "02"},
        {{{"F", Bits(3, Bit(1, "Lid"))}}, "F=off", "00"},
        // Texts.
        {{{"T", text}}, "T=\"a b\"", "01 61 20 62 00"},
        {{{"T", text}}, "T=abc", "01 61 62 63 00"},
        {{{"T", text}}, "T=a b", "01 61 20 62 00"},
        {{{"T", text}}, "T=\"\"", "01 00"},
        {{{"T", text}}, R"(T="\"\\=")", "01 22 5C 3D 00"},
        {{{"T", text}}, "T=\"\u00E4\u20AC\"", "01 E4 A4 00"},
        {{{"T", text}}, "T=\"\u03B1\"", "00 03 B1 00 00"},
        {{{"T", text}}, "T=\"\U0001F3B5\"", "00 D8 3C DF B5 00 00"},
        {{{"T", text}}, "T=utf8:\"\u00E4\"", "02 C3 A4 00"},
        {{{"T", text}}, "T=utf16:\"a\"", "00 00 61 00 00"},
        {{{"T", text}}, "T=utf8:\"\u00E4\u00E4\"", "02 C3 A4 C3 A4 00"},
        // Lists, records and streams.
        {{{"L", Array("3", "E", kUByte)}}, "L=[1,2, 3]", "01 02 03"},
        {{{"L", Array("3", "E", kUByte)}}, "L=[]", ""},
        {{{"L", Array("3", "E", pair)}}, "L=[{a=1,b=2},{b=4,a=3}]", "01 00 02 03 00 04"},
        {{{"R", pair}, {"N", kUByte}}, "R={a=1,b=2} N=3", "01 00 02 03"},
        {{{"Pos", kUWord}, {"Data", Array("3", "E", kUByte)}}, "Pos={x=2,y=0} Data=[7]", "02 00 07"},
        {{{"Pos", kUWord}, {"Data", Array("3", "E", kUByte)}}, "Pos={y=0,x=2} Data=[7]", "02 00 07"},
        {{{"Pos", kUWord}, {"Data", Array("3", "E", kUByte)}},
         "Pos=\"PosX=0 PosY=0\" Data=[7,8]",
         "00 00 07 08"},
        {{{"Pos", kUWord}, {"Data", pair}}, "Pos=[2,0] Data={b=7}", "02 00 00 07"},
        {{{"Pos", Record({{"x", kUByte}, {"y", kUByte}})}, {"Data", pair}},
         "Pos={x=1,y=0} Data={a=7}",
         "01 00 07"},
        {{{"Mode", kUByte}, {"Body", body}}, "Mode=1 Body={A=5}", "01 05"},
        {{{"Mode", kUByte}, {"Body", body}}, "Mode=2 Body={B=5,T=\"x\"}", "02 00 05 01 78 00"},
        {{{"Mode", kUByte}, {"Body", body}}, "Body=hex:09 Mode=1", "01 09"},
        {{{"V", kVoid}}, "", ""},
    };
    return rows;
}

constexpr const char* kAddress = "22.01.400.C";

TEST(Assembler, ValuesBecomeBytes) {
    for (const Row& row : Rows()) {
        SCOPED_TRACE(row.values);
        const Decoding decoding(row.params);
        for (const char* address : {"22.01.400.C ", "Amp.01.Volume.Status ", "amp.volume.status "}) {
            EXPECT_EQ(Assembled(*decoding.Import().catalog, std::string(address) + row.values),
                      std::string(kAddress) + " (" + row.bytes + ")\n");
        }
    }
}

struct FaultRow {
    std::vector<ParamOf> params;
    const char* line;
    const char* fault;
};

TEST(Assembler, FaultsTellLineColumnAndWhatIsAllowed) {
    const std::string speed = Ranged("type_unsigned_word", "-1", "0", "300", "0.5");
    const FaultRow rows[] = {
        {{{"N", kUByte}},
         "Apm.01.Volume.Status N=1",
         "1: no valid FBlockID, expected FBlockID.InstID.FktID.OPType: unknown function block 'Apm' (Amp?)"},
        {{{"N", kUByte}},
         "Amp.Volum.Status N=1",
         "1: no valid FktID, expected FBlockID.InstID.FktID.OPType: unknown function 'Volum' (Volume?)"},
        {{{"N", kUByte}}, "23.01.400.C N=1", "1: unknown function block 0x23"},
        {{{"N", kUByte}}, "22.01.400.2 N=1", "1: unknown operation 0x2"},
        {{{"N", kUByte}},
         "22.01.400.C N=",
         "15: N: no number '', expected a number from 0 to 255 in steps of 1"},
        {{{"N", kUByte}},
         "22.01.400.C N=x",
         "15: N: no number 'x', expected a number from 0 to 255 in steps of 1"},
        {{{"N", kUByte}},
         "22.01.400.C N=256",
         "15: N: no value for '256', expected a number from 0 to 255 in steps of 1"},
        {{{"N", kUByte}},
         "22.01.400.C N=-1",
         "15: N: no value for '-1', expected a number from 0 to 255 in steps of 1"},
        {{{"N", kUByte}},
         "22.01.400.C N=1.5",
         "15: N: no value for '1.5', expected a number from 0 to 255 in steps of 1"},
        {{{"N", kUByte}},
         "22.01.400.C N=0x100",
         "15: N: no number '0x100', expected a number from 0 to 255 in steps of 1"},
        {{{"S", speed}},
         "22.01.400.C S=300.5",
         "15: S: 300.5 is out of range, expected a number from 0 to 300 km/h in steps of 0.5"},
        {{{"S", speed}},
         "22.01.400.C S=0.4",
         "15: S: 0.4 is off the step, expected a number from 0 to 300 km/h in steps of 0.5"},
        {{{"S", speed}},
         "22.01.400.C S=5 mph",
         "15: S: the unit is 'mph', expected a number from 0 to 300 km/h in steps of 0.5"},
        {{{"N", kUByte}, {"M", kUWord}},
         "22.01.400.C N=1",
         "16: missing M, expected a number from 0 to 65535 in steps of 1"},
        {{{"S", speed}},
         "22.01.400.C S=0xFFFF",
         "15: S: 6553.5 is out of range, expected a number from 0 to 300 km/h in steps of 0.5"},
        {{{"S", speed}},
         "22.01.400.C S=0x0004",
         "15: S: 0.4 is off the step, expected a number from 0 to 300 km/h in steps of 0.5"},
        {{{"Pos", kUWord}, {"Data", Array("3", "E", kUByte)}},
         "22.01.400.C Pos={foo=2,bar=0} Data=[7]",
         "17: Pos: no coordinates, expected x and y such as {x=1,y=0}"},
        {{{"Pos", kUWord}, {"Data", Array("3", "E", kUByte)}},
         "22.01.400.C Pos={x=2,x=0} Data=[7]",
         "17: Pos: no coordinates, expected x and y such as {x=1,y=0}"},
        {{{"E", kSwitch}}, "22.01.400.C E=\"Auto (0x01)\"", "15: E: 'Auto' is no name of 0x01, expected On"},
        {{{"F", Bits(3,
                     "<TBoolField BitPos=\"1\"><ParamName>Lid</ParamName><BitTrueDesc>x</BitTrueDesc>"
                     "<BitFalseDesc>x</BitFalseDesc></TBoolField>")}},
         "22.01.400.C F={Lid=x}",
         "20: F: both states of the bit are called 'x', expected on or off"},
        {{{"Level", kUByte}}, "22.01.400.C Levle=1", "13: unknown parameter 'Levle' (Level?)"},
        {{{"Level", kUByte}}, "22.01.400.C Level=1 Size=2", "21: unknown parameter 'Size', expected Level"},
        {{{"Level", kUByte}}, "22.01.400.C Level=1 Level=2", "21: 'Level' is one too many"},
        {{{"E", kSwitch}}, "22.01.400.C E=Atuo", "15: E: no value 'Atuo' (Auto?)"},
        {{{"E", kSwitch}}, "22.01.400.C E=Autoo", "15: E: no value 'Autoo' (Auto?)"},
        {{{"E", kSwitch}}, "22.01.400.C E=256", "15: E: no value '256', expected Off, On, Auto"},
        {{{"F", Bits(4, Bit(0, "Lid"))}}, "22.01.400.C F={Lit=1}", "16: F: unknown bit 'Lit' (Lid?)"},
        {{{"F", Bits(4, Bit(0, "Lid"))}},
         "22.01.400.C F={bit4=1}",
         "16: F: unknown bit 'bit4', expected Lid"},
        {{{"F", Bits(4, Bit(0, "Lid"))}},
         "22.01.400.C F={Lid=ajar}",
         "20: F: no value of a bit 'ajar', expected on, off or the text of the bit"},
        {{{"T", Text("3")}},
         "22.01.400.C T=\"abcd\"",
         "15: T: the text has 4 characters, expected a text of at most 3 characters"},
        {{{"T", Text("3")}},
         "22.01.400.C T=utf8:\"\u00E4\u00E4\u00E4\u00E4\"",
         "15: T: the text has 8 bytes in UTF-8, expected at most 3"},
        {{{"T", Text("3")}, {"N", kUByte}},
         "22.01.400.C T=\"\u00E4\u20AC\" N=x",
         "22: N: no number 'x', expected a number from 0 to 255 in steps of 1"},
        {{{"T", Text("3")}}, "22.01.400.C T=\"abc", "15: no closing quotation mark"},
        {{{"T", Text("3")}},
         "22.01.400.C T=latin9:\"\u03B1\"",
         "15: T: the text has characters that its encoding has not, expected utf16:\"...\" or utf8:\"...\""},
        {{{"L", Array("2", "E", kUByte)}}, "22.01.400.C L=[1,2,3]", "15: L: 3 entries, expected at most 2"},
        {{{"L", Array("2", "E", kUByte)}}, "22.01.400.C L=1", "15: L: expected a list such as [1,2]"},
        {{{"L", Array("2", "E", kUByte)}},
         "22.01.400.C L=[1,x]",
         "18: E: no number 'x', expected a number from 0 to 255 in steps of 1"},
        {{{"L", Array("2", "E", kUByte)}}, "22.01.400.C L=[1,2", "15: no closing ]"},
        {{{"R", Record({{"a", kUByte}})}},
         "22.01.400.C R={a=1,c=2}",
         "20: unknown parameter 'c', expected a"},
        {{{"R", Record({{"a", kUByte}})}}, "22.01.400.C R={a 1}", "16: 'a', expected a name and ="},
        {{{"R", Record({{"a", kUByte}, {"b", kUByte}})}},
         "22.01.400.C R={a=1}",
         "15: missing b, expected a number from 0 to 255 in steps of 1"},
        {{{"Mode", kUByte}, {"Body", Stream(Case("Mode", "1", {{"1", "A", kUByte}}))}},
         "22.01.400.C Mode=2 Body={A=1}",
         "25: Body: no case fits what selects it"},
        {{{"N", kUByte}}, "Amp.Volume.Status 5", "19: '5', expected a name and ="},
        {{{"N", kUByte}}, "22.01.400.C N=hex:0G", "15: no data byte '0G', expected two hexadecimal digits"},
        {{{"N", kUByte}},
         "22.01.400.C N=hex:0102",
         "1: the values make no message of the operation: byte 1: 1 byte left over"},
    };
    for (const FaultRow& row : rows) {
        SCOPED_TRACE(row.line);
        const Decoding decoding(row.params);
        EXPECT_EQ(Assembled(*decoding.Import().catalog, std::string("# note\n\n") + row.line),
                  "!3:" + std::string(row.fault) + "\n");
    }
}

TEST(Assembler, ForceLetsRangeAndStepPassAlone) {
    const Decoding decoding({{"S", Ranged("type_unsigned_word", "-1", "0", "300", "0.5")}});
    const ZMTCatalog& catalog = *decoding.Import().catalog;
    EXPECT_EQ(Assembled(catalog, "22.01.400.C S=300.5", true), "22.01.400.C (0B BD)\n");
    EXPECT_EQ(Assembled(catalog, "22.01.400.C S=0.4", true), "22.01.400.C (00 04)\n");
    EXPECT_TRUE(Assembled(catalog, "22.01.400.C S=7000", true).starts_with("!1:15: S: no value for"));
    EXPECT_TRUE(Assembled(catalog, "22.01.400.C S=1 mph", true).starts_with("!1:15: S: the unit"));
}

TEST(Assembler, KeepsWhatStandsInFrontAndTheOrder) {
    const Decoding decoding({{"N", kUByte}});
    EXPECT_EQ(
        Assembled(*decoding.Import().catalog,
                  "12.5 Rx 0101 -> 0400 Amp.02.Volume.Status N=1\n22.01.400.C 07\nAmp.Volume.Status N=x\n"
                  "22.01.400.C (08) Amp.Volume.Status\n"),
        "12.5 Rx 0101 -> 0400 22.02.400.C (01)\n22.01.400.C (07)\n"
        "!3:21: N: no number 'x', expected a number from 0 to 255 in steps of 1\n22.01.400.C (08)\n");
}

TEST(Assembler, ChangedReportsAreEncodedAgain) {
    const Decoding decoding(
        {{"N", kUByte}, {"F", Bits(4, Bit(1, "Lid"))}, {"T", Text("9")}, {"L", Array("9", "E", kUByte)}});
    const ZMTCatalog& catalog = *decoding.Import().catalog;
    const std::string head = "22.01.400.C (05 F2 02 61 09 00 07) Amp.Volume.Status\n";
    const auto report = [&](const char* number, const char* lid, const char* others, const char* text) {
        return head + "  N = " + number + "\n  F\n    [bit1] Lid = " + lid + "\n    [bit3..2 0] = " + others +
               "\n  T = " + text + "\n  L\n    [1] E = 7\n";
    };
    // What says the same keeps the bytes and bits that a report does not show.
    EXPECT_EQ(Assembled(catalog, report("5", "open", "00 0", "a.")), "22.01.400.C (05 F2 02 61 09 00 07)\n");
    EXPECT_EQ(Assembled(catalog, report("6", "open", "00 0", "a.")), "22.01.400.C (06 F2 02 61 09 00 07)\n");
    EXPECT_EQ(Assembled(catalog, report("5", "closed", "10 1", "b")), "22.01.400.C (05 F9 01 62 00 07)\n");
    EXPECT_EQ(Assembled(catalog, report("5", "open", "00 0", "a.") + "    [2] E = 8\n"),
              "22.01.400.C (05 F2 02 61 09 00 07 08)\n");
    EXPECT_EQ(Assembled(catalog, report("5", "ajar", "00 0", "a.")),
              "!4:18: F: no value of a bit 'ajar', expected on, off or the text of the bit\n");
}

TEST(Assembler, ChangedJsonIsEncodedAgain) {
    const Decoding decoding({{"N", kSByte}, {"E", kSwitch}, {"T", Text("9")}});
    const ZMTCatalog& catalog = *decoding.Import().catalog;
    const auto json = [](const std::string& raw, const std::string& code, const std::string& text) {
        return R"({"line":1,"message":"22.01.400.C","data":"05016100","items":[)"
               R"({"name":"N","type":"number","offset":0,"bytes":"05","text":"5","raw":)" +
               raw + R"(},{"name":"E","type":"enumeration","offset":1,"bytes":"01","text":"On","raw":)" +
               code + R"(,"value":"On"},{"name":"T","type":"string","offset":2,"bytes":"6100","text":")" +
               text + R"("}],"errors":[]})";
    };
    EXPECT_EQ(Assembled(catalog, json("-2", "2", "xy")), "22.01.400.C (FE 02 01 78 79 00)\n");
    EXPECT_EQ(Assembled(catalog, R"({"message":"22.01.400.C","data":"01"})"), "22.01.400.C (01)\n");
    EXPECT_EQ(Assembled(catalog, R"({"message":"22.01.400.C","items":5})"),
              "!1:1: no valid 'items', expected those of a report\n");
    EXPECT_EQ(Assembled(catalog, "{"), "!1:1: the object does not end\n");
}

/// A report of one message with the parameters, and what becomes of it when a part of its text is another.
struct ChangeRow {
    std::vector<ParamOf> params;
    const char* bytes;
    const char* from;
    const char* to;
    const char* text;
    const char* json = nullptr;
};

std::string Changed(std::string report, std::string_view from, std::string_view to) {
    const std::size_t at = report.find(from);
    EXPECT_NE(at, std::string::npos) << report;
    return report.replace(std::min(at, report.size()), from.size(), to);
}

TEST(Assembler, ParametersThatSayTheSameKeepTheirBytes) {
    const std::string speed = Ranged("type_unsigned_word", "-1", "0", "300", "0.5");
    const std::string turned =
        Bits(3,
             "<TBoolField BitPos=\"1\"><ParamName>Lid</ParamName><BitTrueDesc>0</BitTrueDesc>"
             "<BitFalseDesc>1</BitFalseDesc></TBoolField>");
    const std::string alike =
        Bits(3,
             "<TBoolField BitPos=\"1\"><ParamName>Lid</ParamName><BitTrueDesc>x</BitTrueDesc>"
             "<BitFalseDesc>x</BitFalseDesc></TBoolField>");
    const std::string body =
        Stream(Case("N", "5", {{"1", "A", Text("9")}}) + Case("N", "6", {{"1", "B", Text("9")}}));
    const ChangeRow rows[] = {
        // A text that is none, beside a number.
        {{{"N", kUByte}, {"T", Text("9")}}, "05 02 61 09 00", "N = 5", "N = 6", "06 02 61 09 00"},
        {{{"N", kUByte}, {"T", Text("9")}},
         "05 02 61 09 00",
         "\"raw\":5",
         "\"raw\":6",
         nullptr,
         "06 02 61 09 00"},
        {{{"N", kUByte}, {"T", Text("9")}}, "05 07 61 00", "N = 5", "N = 6", "06 07 61 00"},
        // Numbers that are out of range or rounded.
        {{{"N", kUByte}, {"S", speed}}, "05 FF FF", "N = 5", "N = 6", "06 FF FF"},
        {{{"N", kUByte}, {"S", Number("type_unsigned_long", "9")}},
         "05 12 34 56 78",
         "N = 5",
         "N = 6",
         "06 12 34 56 78"},
        {{{"N", kUByte}, {"S", speed}}, "05 FF FF", "\"raw\":5", "\"raw\":6", nullptr, "06 FF FF"},
        {{{"N", kUByte}, {"S", speed}},
         "05 00 00",
         "\"raw\":0",
         "\"raw\":65535",
         nullptr,
         "!S: 6553.5 is out of range, expected a number from 0 to 300 km/h in steps of 0.5"},
        {{{"N", kUByte}},
         "05",
         "\"raw\":5",
         "\"raw\":-1",
         nullptr,
         "!N: no raw value '-1', expected one from 0 to 255"},
        {{{"N", kUByte}},
         "05",
         "\"raw\":5",
         "\"raw\":18446744073709551615",
         nullptr,
         "!N: no raw value '9223372036854775807', expected one from 0 to 255"},
        {{{"N", kSByte}}, "05", "\"raw\":5", "\"raw\":-128", nullptr, "80"},
        {{{"N", kSByte}},
         "05",
         "\"raw\":5",
         "\"raw\":-129",
         nullptr,
         "!N: no raw value '-129', expected one from -128 to 127"},
        {{{"E", kSwitch}},
         "01",
         "\"raw\":1",
         "\"raw\":-1",
         nullptr,
         "!E: no value '-1', expected Off, On, Auto"},
        // Names of codes.
        {{{"E", kSwitch}}, "01", "On (0x01)", "Auto (0x01)", "!E: 'Auto' is no name of 0x01, expected On"},
        {{{"E", kSwitch}}, "01", "On (0x01)", "Auto (0x02)", "02"},
        {{{"E", kSwitch}}, "01", "On (0x01)", "On (0x07)", "!E: 'On' is no name of 0x07"},
        {{{"E", kSwitch}}, "01", "On (0x01)", "0x07", "07"},
        {{{"E", kSwitch}}, "01", "On (0x01)", "Auto", "02"},
        // Bits that no report shows, or whose texts say nothing.
        {{{"N", kUByte}, {"F", turned}}, "05 FA", "N = 5", "N = 6", "06 FA"},
        {{{"F", turned}}, "FA", "Lid = 0", "Lid = 1", "F8"},
        {{{"F", turned}}, "FA", "\"bit\":1,\"raw\":1", "\"bit\":1,\"raw\":0", nullptr, "F8"},
        {{{"F", turned}}, "FA", "\"bit\":0,\"raw\":0", "\"bit\":0,\"raw\":1", nullptr, "FB"},
        {{{"F", turned}},
         "FA",
         "\"bit\":0,\"raw\":0",
         "\"bit\":0,\"raw\":2",
         nullptr,
         "!F: no value of a bit '2', expected on, off or the text of the bit"},
        {{{"F", alike}}, "02", "] = 0 0", "] = 1 0", "06"},
        // Bytes are kept for their own parameter alone.
        {{{"N", kUByte}, {"Body", body}},
         "05 02 61 09 00",
         "N = 5",
         "N = 6",
         "!unknown parameter 'A', expected B"},
    };
    for (const ChangeRow& row : rows) {
        SCOPED_TRACE(std::string(row.bytes) + " " + row.to);
        const Decoding decoding(row.params);
        CapturedMessage message{.fBlockID = 0x22, .instID = 1, .fktID = 0x400, .opType = 0xC};
        message.data = BytesOf(row.bytes);
        message.line = 1;
        const auto decoded = decoding.Decode(row.bytes);
        std::string report;
        if (row.text != nullptr) {
            TextReport().Message({.file = "", .number = 1}, message, *decoded, report);
        } else {
            JsonReport().Message({.file = "", .number = 1}, message, *decoded, report);
        }
        const std::string expected = row.text != nullptr ? row.text : row.json;
        std::string became = Assembled(*decoding.Import().catalog, Changed(report, row.from, row.to));
        if (expected.starts_with('!')) {
            EXPECT_TRUE(became.ends_with(": " + expected.substr(1) + "\n")) << became;
        } else {
            EXPECT_EQ(became, "22.01.400.C (" + expected + ")\n");
        }
    }
}

std::string Nested(std::size_t levels) {
    return R"({"message":"22.01.400.C","data":"32","x":)" + std::string(levels, '[') +
           std::string(levels, ']') + "}";
}

TEST(Assembler, DeepJsonIsAFault) {
    const Decoding decoding({{"N", kUByte}});
    const ZMTCatalog& catalog = *decoding.Import().catalog;
    EXPECT_EQ(Assembled(catalog, Nested(149)), "22.01.400.C (32)\n");
    for (const std::size_t levels : {std::size_t{150}, std::size_t{70'000}, std::size_t{1'000'000}}) {
        EXPECT_EQ(Assembled(catalog, Nested(levels)), "!1:1: the object has too many levels\n");
    }
    EXPECT_EQ(Assembled(catalog, std::string(70'000, '[') + "\n22.01.400.C 32"),
              "!1:1: no valid FBlockID, expected FBlockID.InstID.FktID.OPType\n22.01.400.C (32)\n");
}

struct PassRow {
    const char* lines;
    const char* passed;
};

TEST(Assembler, CapturesPassInAllStyles) {
    const Decoding decoding({{"Gain(dB)", kUByte}});
    const PassRow rows[] = {
        {"22.01.400.C 32 # vol=50", "22.01.400.C (32)\n"},
        {"22.01.400.C 32 ; a=b", "22.01.400.C (32)\n"},
        {"22.01.400.C (32) // a=b", "22.01.400.C (32)\n"},
        {"Amp.01.Volume.Status 32", "22.01.400.C (32)\n"},
        {"Amp.Volume.Status [1] 32", "22.01.400.C (32)\n"},
        {"22.01.400.C Gain(dB)=3", "22.01.400.C (03)\n"},
        {"22.01.400.C Gain(dB) = 3 # a=b", "22.01.400.C (03)\n"},
        {"Amp.Volume.Status", "!1:18: missing Gain(dB), expected a number from 0 to 255 in steps of 1\n"},
        {"time;fblock;inst;fkt;optype;length;data\n;22;01;400;C;1;32\n1.5;22;01;400;C;1;33",
         "22.01.400.C (32)\n1.5 22.01.400.C (33)\n"},
        {R"([{"message":"22.01.400.C","data":[50]},{"message":"22.01.400.C","data":"33"}])",
         "22.01.400.C (32)\n22.01.400.C (33)\n"},
        {"{\n\"message\":\"22.01.400.C\",\n\"data\":[50]\n}\n", "22.01.400.C (32)\n"},
        {R"({"message":"22.01.400.C","data":[0,50],"telID":0})", "22.01.400.C (00 32)\n"},
        {R"({"message":"22.01.400.C","data":[0,50],"telID":1})",
         "!1:1: a segment of a message (telegram identifier 1), expected whole messages\n"},
        {"message,telid,data\n22.01.400.C,3,0132",
         "!2:1: a segment of a message (telegram identifier 3), expected whole messages\n"},
        {"message,data,optype\nAmp,32", "!2:1: 2 values, but the table has 3 columns\n"},
        {"12.5 22.01.400.C 32 G0", "!1:21: no data byte 'G0', expected two hexadecimal digits\n"},
        {"22.01.400.C [2] 32", "!1:14: length 2, but 1 data byte\n"},
        {"22.01.400.C.2 32", "!1:13: length 2, but 1 data byte\n"},
        {"22.01.400.C (32", "!1:13: no closing parenthesis\n"},
        {"22.01.400.C (32) (33)", "!1:18: '(33)' behind the data, expected a comment\n"},
        {" 12.5 hello",
         "!1:7: no valid FBlockID, expected FBlockID.InstID.FktID.OPType: unknown function block 'hello'\n"},
    };
    for (const PassRow& row : rows) {
        SCOPED_TRACE(row.lines);
        EXPECT_EQ(Assembled(*decoding.Import().catalog, row.lines), row.passed);
    }
}

}  // namespace
}  // namespace tarvex::test::assembler_test
