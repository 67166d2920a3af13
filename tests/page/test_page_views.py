"""What the page of a catalog shows: the overview, blocks, functions, every kind of parameter, drawings, faults."""

import unittest

from browser import PageTest
from selenium.webdriver.common.by import By

# Kinds of parameters: page, function, number of the parameter, and all that is read of it.
PARAMETERS = [
    ("roadster", "22.402", 0, "Bass / signed number, 1 byte / Set, Status / Range / -12.5 .. 12.5 / Step / 0.5 / "
     "Exponent / -1 / Unit / dB"),
    ("roadster", "22.406", 0, "Speakers / bit field, 2 bytes, 10 bits used / Set, Status / Bit Name 1 0 / "
     "0 Front left on off / 1 Front right on off / 8 Tweeter left on off / 9 Tweeter right on off"),
    ("roadster", "22.113", 0, "Mute / boolean, 1 byte, 8 bits used / Set, SetGet, Status / Bit Name 1 0 / "
     "0 – muted audible"),
    ("roadster", "22.113", 1, "ErrorCode / enumeration, 1 byte / Error / Why the command was refused. / Code Value / "
     "0x01 FBlockID unknown / 0x03 FktID unknown / 0x06 Parameter out of range / 0x07 Parameter not available / "
     "0x20 Function & device busy"),
    ("roadster", "22.000", 0, "FktIDList / function ids, open / Status"),
    ("roadster", "06.010", 0, "Version / string, open, at most 12 bytes / Status"),
    ("roadster", "22.408", 1, "Data / array, open, at most 8 elements / Set, Status / Chosen by / Pos / "
     "Trim / signed number, 1 byte / Range / -6 .. 6 / Step / 0.1 / Exponent / -1 / Unit / dB"),
    ("roadster", "31.207", 1, "Data / record, open / Status / Chosen by / Pos / Loaded / boolean, 1 byte, 8 bits used / "
     "Bit Name 1 0 / 0 – yes no / Label / string, open, at most 16 bytes"),
    ("roadster", "60.202", 1, "Data / stream, open, at most 26 bytes / Status / Chosen by / Pos / When PosY=0x01 / "
     "Distance / unsigned number, 2 bytes / Range / 0 .. 6553500 / Step / 100 / Exponent / 2 / Unit / m / "
     "Fuel / unsigned number, 1 byte / Range / 0 .. 25.5 / Step / 0.1 / Exponent / -1 / "
     "When PosX=2..3, PosY=0x02..0x06 / Stage / unsigned number, 1 byte / Range / 1 .. 99 / Step / 1 / "
     "Departure / unsigned number, 2 bytes / Range / 0 .. 86400 / Step / 10 / Exponent / 1 / Unit / s / "
     "Slope / signed number, 2 bytes / Range / -1 .. 1 / Step / 1e-04 / Exponent / -4 / "
     "Height / signed number, 2 bytes / Range / -500 .. 9000 / Step / 1 / Unit / m / When PosY>=0x07 / "
     "Note / string, open, at most 24 bytes"),
    ("convertible", "52.201", 1, "Segments / stream, open / Status / Always / RoadClass / enumeration, 1 byte / "
     "Code Value / 0x01 Lane / 0x02 Motorway / repeated to the end: / SegmentLength / unsigned number, 2 bytes / "
     "Step / 1 / Unit / m"),
    ("convertible", "53.200", 1, "Page / classified stream, open, at most 64 bytes / Status / Media type / text/html"),
    ("convertible", "71.205", 1, "Program / short stream, open, at most 8 bytes / Set, SetGet, Status / Chosen by / "
     "ProgramKind / When PosX=ProgramKind, PosY=0x00 / StartMinute / signal, 11 bits / Of the day. / "
     "QuarterHours / signal, 5 bits / When PosX=ProgramKind, PosY=0x01 / StartHour / unsigned number, 1 byte / Range / "
     "0 .. 23 / Step / 1 / Curve / array, open / Degrees / signed number, 1 byte / Step / 1 / Unit / °C / "
     "When PosX=ProgramKind, PosY=0x02..0x03 / Power / signal, 12 bits / When PosX=ProgramKind, PosY>=0x10 / "
     "bytes that the catalog does not describe"),
]


class Views(PageTest):
    def sections(self):
        return self.texts("main h2")

    def open_at(self, page, address):
        """Opens the page, unless it is there already."""
        if self.driver.current_url.split("#")[0].endswith(f"/{page}.html"):
            self.go(address)
        else:
            self.open(page, address)

    def drawing_rows(self, number=0):
        """The labels of bytes and the texts in them, from top to bottom."""
        texts = self.js("return [...document.querySelectorAll('svg.drawing')[arguments[0]]"
                        ".querySelectorAll('text:not(.bit)')].map((e) => [e.getAttribute('class'), e.textContent])",
                        number)
        rows = []
        for kind, text in texts:
            if kind.startswith("byte"):
                rows.append([])
            rows[-1].append(text)
        return [" ".join(row) for row in rows]

    def test_overview(self):
        self.open("roadster")
        self.assertEqual(self.heading(), "roadster.xml")
        self.assertEqual(self.text(".line"), "release 3.1 of 2024-06-03")
        self.assertEqual(self.lines(".figures"),
                         ["blocks", "6", "functions", "63", "messages", "154", "faults", "40"])
        self.assertEqual(self.table(".blocks"), [
            ["ID", "Block", "Kind", "Version", "Functions", "Faults", "Layouts"],
            ["06", "Diagnosis", "Slave", "1.2 of 2024-05-17", "4", "–", "–"],
            ["22", "AudioAmp", "Slave", "1.2 of 2024-05-17", "14", "4 faults", "–"],
            ["31", "Disc Player", "Slave", "2.0 of 2024-05-17", "14", "6 faults", "–"],
            ["40", "Tuner Süd/West", "Slave", "1.2 of 2024-05-17", "14", "5 faults", "1 incomplete"],
            ["50", "Phone", "Slave", "1.2 of 2024-05-17", "11", "15 faults", "5 incomplete"],
            ["60", "Gateway", "Slave", "1.0 of 2024-05-31", "6", "5 faults", "1 incomplete"]])

    def test_overview_tells_what_was_lost(self):
        self.open("roadster")
        section = self.lines("section[aria-labelledby=losses]")
        self.assertEqual(section[:3], [
            "What was lost", "1 block, 3 functions, 2 messages.", "Messages whose layout is incomplete (9)"])
        self.assertEqual(self.texts(".addresses")[0].split("\n"), [
            "40.202.C", "50.300.0", "50.300.2", "50.305.C", "50.306.0", "50.306.2", "50.307.C", "50.308.0",
            "60.204.0"])
        self.assertEqual(self.texts(".faults .kind"), ["warning 1", "warning 3", "warning 6", "error 143", "error 149"])
        self.open("convertible")
        self.assertEqual(self.lines("section[aria-labelledby=losses]"),
                         ["What was lost", "Nothing: all of the catalog could be read."])

    def test_block(self):
        self.open("roadster", "31")
        self.assertEqual(self.heading(), "Disc Player")
        self.assertEqual(self.lines(".heading")[1:], ["31", "Copy link", "Slave", "version 2.0 of 2024-05-17",
                                                      "in databases Disc_Player", "14 functions", "6 faults", "One slot for a disc of 12 cm."])
        table = self.table(".functions")
        self.assertEqual(table[0], ["ID", "Function", "Class", "OPTypes", "Description", "Faults"])
        self.assertEqual(table[1], ["000", "FktIDs", "property PUnclassified", "1CF",
                                    "Tells which functions <FktID1> to <FktIDn> the block offers.", ""])
        self.assertEqual([row[:4] for row in table[9:12]], [
            ["206", "TrackList", "property PArray", "1C"], ["207", "Magazine", "property PRecord", "1C"],
            ["208", "Eject", "method MTrigger", "0"]])
        self.assertEqual(len(table), 15)
        self.assertEqual(self.js("return document.querySelector('.op-types abbr').title"), "Get")

    def test_faults_of_a_block_that_are_about_none_of_its_functions(self):
        self.open("roadster", "31")
        self.assertEqual(self.sections(), ["Faults of the block and of what is lost of it", "Functions"])
        self.assertEqual(self.lines("section[aria-labelledby=own-faults] .faults"), [
            "error 106", "Can not find definition of function 'fkt_presets' (<Function>)", "line 336, column 5",
            "/Disc_Player/",
            "error 145", "Failed to import element <Function>", "line 336, column 5", "/Disc_Player"])

    def test_function(self):
        self.open("roadster", "22.402")
        self.assertEqual(self.heading(), "Bass & Treble")
        self.assertEqual(self.lines(".heading")[1:], ["22.402", "Copy link", "property PUnclassified",
                                                      "section Unique", "in databases Bass__Treble"])
        self.assertEqual(self.sections(), ["Operations", "Parameters", "Bytes and signals"])
        self.assertEqual(self.table(".operations"), [
            ["OPType", "Bass", "Treble", "Bytes", "Layout", "Identifier", "Message"],
            ["0 Set", "1", "2", "2", "complete", "0x224020", "AudioAmp_BassTreble_Set"],
            ["1 Get", "–", "–", "0", "complete", "0x224021", "AudioAmp_BassTreble_Get"],
            ["C Status", "1", "2", "2", "complete", "0x22402C", "AudioAmp_BassTreble_Status"]])
        self.assertEqual(self.texts(".bytes h3"), ["0 Set, C Status"])
        self.assertEqual(self.lines(".messages"), [
            "0 Set", "AudioAmp_BassTreble_Set", "0x224020 extended, 2 bytes",
            "C Status", "AudioAmp_BassTreble_Status", "0x22402C extended, 2 bytes"])
        self.assertEqual(self.table(".signals"), [
            ["Letter", "Signal", "Start bit", "Bits", "Order", "Sign", "Factor", "Range", "Unit"],
            ["A", "Bass", "7", "8", "big-endian", "signed", "0.1", "-12.5 .. 12.5", "dB"],
            ["B", "Treble", "15", "8", "big-endian", "signed", "0.1", "-12.5 .. 12.5", "dB"]])

    def test_every_kind_of_parameter(self):
        for page, address, number, expected in PARAMETERS:
            with self.subTest(f"{page} {address} {number}"):
                self.open_at(page, address)
                section = f"section.parameter[aria-labelledby=parameter-{number}]"
                self.assertEqual(" / ".join(self.lines(section)), expected)

    def test_an_operation_is_marked(self):
        self.open("roadster", "22.402.c")
        self.assertEqual(self.text(".heading .address"), "22.402.C")
        self.assertEqual([line.split()[0] for line in self.texts("tr.current")], ["C"])

    def test_drawings(self):
        rows = [
            ("22.402", ["0 A Bass", "1 B Treble"]),
            ("22.408", ["0 A Pos", "1 A Pos", "2– open"]),
            ("50.307", ["0 A Provider", "1 A Provider", "2 A Provider", "3 A Provider", "4 B", "5 C Level", "6– ?"]),
        ]
        for address, expected in rows:
            with self.subTest(address):
                self.open("roadster", address)
                self.assertEqual(self.drawing_rows(), expected)
        self.assertEqual(self.texts(".groups .note"),
                         ["From byte 6 on: Network has another number of fields than it says (message 55)"])

    def test_groups_of_a_multiplexed_record_stand_one_behind_the_other(self):
        self.open("roadster", "22.409")
        self.assertEqual(self.texts(".bytes:first-of-type h4"), [f"Multiplexor {value}" for value in range(6)])
        self.assertEqual(self.drawing_rows(0), [
            "0 A PosX", "1 A PosX", "2 B Delay_M0", "3 B Delay_M0", "4 D Chasss_typ_f_th_wfr_M0", "5 G", "6 F", "7 J",
            "8 L Gain_M0"])
        self.assertEqual(self.drawing_rows(5), ["0 A PosX", "1 A PosX", "2 M Gain_M5", "3–8"])
        self.assertEqual(self.table(".bytes:first-of-type .signals")[1][-1], "multiplexor")
        self.assertEqual(self.table(".bytes:first-of-type .signals")[-1][-1], "for 5")

    def test_signals_differ_without_colours(self):
        self.open("roadster", "60.200")
        fills = self.js("return [...document.querySelectorAll('svg.drawing rect[fill]')]"
                        ".map((e) => e.attributes.fill.value)")
        self.assertEqual(sorted(set(fills)), ["url(#pattern-0)", "url(#pattern-1)"])
        paths = self.js("return [...document.querySelectorAll('.patterns path')].map((e) => e.getAttribute('d'))")
        self.assertEqual(len(set(paths[:8])), 8)

    def test_a_drawing_is_told_to_those_who_do_not_see_it(self):
        self.open("roadster", "50.307")
        self.assertEqual(
            self.js("return document.querySelector('svg.drawing').getAttribute('aria-label')"),
            "C Status: byte 0 A; byte 1 A; byte 2 A; byte 3 A; byte 4 free bits 7 to 1, B bits 0 to 0; byte 5 C; "
            "then unknown")

    def test_faults_stand_at_what_they_are_about(self):
        self.open("roadster", "50.307")
        self.assertEqual(self.texts("section[aria-labelledby=own-faults] .kind"), ["error 56", "error 129"])
        self.assertEqual(self.lines("section.parameter .fault"), [
            "warning 55", "Number of record fields (3) does not match value of attribute 'NElements' (4) (<TRecord>)",
            "line 929, column 24", "/Phone/NetworkInfo/Network"])
        self.go("40.202")
        self.assertEqual(self.texts("section[aria-labelledby=own-faults] .kind"), ["error 152", "error 129"])
        self.assertEqual(self.lines("section[aria-labelledby=operations]")[-5:], [
            "Faults of Status", "warning 102", "Gap in parameter set before parameter 'Multipath' (<PUParam>)",
            "line 610, column 9", "/Tuner_SdWest/SignalStrength/Status"])
        # What Set and SetGet lack is no fault of the parameter, which has it in Status.
        self.go("50.306")
        self.assertEqual(self.texts("section[aria-labelledby=operations] h3"), ["Faults of Set", "Faults of SetGet"])
        self.assertEqual(self.texts("section.parameter .fault"), [])

    def test_positions_are_those_of_the_catalog(self):
        self.open("roadster", "40.202")
        self.assertEqual([row[:3] for row in self.table(".operations")],
                         [["OPType", "Multipath", "Bytes"], ["1 Get", "–", "0"], ["C Status", "2", "0?"]])

    def test_an_operation_that_lost_everything_is_shown(self):
        self.open("roadster", "50.306.0")
        self.assertEqual(self.table(".operations")[1][0], "0 Set")
        self.assertIn("lost", self.table(".operations")[1])

    def test_nothing_at_an_address(self):
        for address in ["99", "22.999", "22.402.5", "nonsense", "22.402.C.1.1", "%3Cb%3E"]:
            with self.subTest(address):
                self.open("roadster")
                self.js("location.hash = arguments[0]", address)
                self.wait_until("return document.querySelector('h1').innerText === 'Nothing here'")
                self.assertEqual(self.driver.find_elements(By.CSS_SELECTOR, "main b"), [])


if __name__ == "__main__":
    unittest.main()
