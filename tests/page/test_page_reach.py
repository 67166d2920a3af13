"""Whether everybody can read the page: with a screen reader, by day and by night, large, small, and on paper."""

import unittest

from browser import AXE, HEIGHT, PageTest, page_of_text

VIEWS = [
    ("the overview", "roadster", ""),
    ("a block", "roadster", "31"),
    ("a function", "roadster", "22.409.C"),
    ("a function with faults", "roadster", "50.307"),
    ("a function with cases", "convertible", "52.203"),
]


def large_catalog(functions, values):
    """A catalog with a block of so many functions, the first of which has a parameter of so many values."""
    names = "".join(f'<TEnumValue Code="{code}">Value{code}</TEnumValue>' for code in range(values))
    enum = f'<TEnum TypeRef="type_enum" TEnumMax="65535">{names}</TEnum>'
    void = '<TVoid TypeRef="type_void"/>'
    functions = "".join(f"""<Function><FunctionID>{number}</FunctionID><FunctionName>F{number}</FunctionName>
      <FunctionDescription>Number {number}.</FunctionDescription>
      <FunctionClass><Property><PUnclassified><PUParam><ParamName>P</ParamName>
      <PUParamOPType><PReportStatus><ParamPos>1</ParamPos></PReportStatus></PUParamOPType>
      <PUParamType>{enum if number == 0 else void}</PUParamType></PUParam></PUnclassified></Property></FunctionClass>
      </Function>""" for number in range(functions))
    return f"""<FunctionCatalog><FBlock><FBlockID>0x22</FBlockID><FBlockName>Large</FBlockName>{functions}</FBlock>
      <Definition><TypeDef TypeID="type_enum"><TDefName>Enum</TDefName><TDefSize>2</TDefSize></TypeDef>
      <TypeDef TypeID="type_void"><TDefName>Void</TDefName><TDefSize>0</TDefSize></TypeDef></Definition>
      </FunctionCatalog>"""


def element(tag, *content):
    return f"<{tag}>{''.join(content)}</{tag}>"


def number(word="Byte"):
    return (f'<TNumber><BasisDataType><TU{word} TypeRef="type_{word}"/></BasisDataType><Exponent>0</Exponent>'
            '<RangeMin>-2147483648</RangeMin><RangeMax>2147483647</RangeMax><Step>1</Step><Unit UnitRef="unit"/></TNumber>')


def record(fields):
    """A record of fields: names and types."""
    inner = "".join(f'<TRecordField FieldIdx="{place}"><TRecordFieldName>{name}</TRecordFieldName>{kind}</TRecordField>'
                    for place, (name, kind) in enumerate(fields, 1))
    return f'<TRecord TypeRef="type_record" NElements="{len(fields)}">{inner}</TRecord>'


def enumeration(values):
    inner = "".join(f'<TEnumValue Code="{code}">Value {code}</TEnumValue>' for code in range(values))
    return f'<TEnum TypeRef="type_Byte" TEnumMax="{values}">{inner}</TEnum>'


def function(identifier, params):
    """A property with parameters, names and types, all of them in Status."""
    inner = "".join(
        f"<PUParam><ParamName>{name}</ParamName><PUParamOPType><PReportStatus><ParamPos>{place}</ParamPos>"
        f"</PReportStatus></PUParamOPType><PUParamType>{kind}</PUParamType></PUParam>"
        for place, (name, kind) in enumerate(params, 1))
    return element("Function", f"<FunctionID>0x{identifier:03X}</FunctionID><FunctionName>F{identifier:03X}</FunctionName>",
                   "<FunctionClass><Property>", element("PUnclassified", inner), "</Property></FunctionClass>")


def catalog_of(*functions):
    types = "".join(f'<TypeDef TypeID="type_{name}"><TDefName>{name}</TDefName><TDefSize>{size}</TDefSize></TypeDef>'
                    for name, size in [("Byte", 1), ("Word", 2), ("record", 0)])
    unit = ('<UnitDef UnitID="unit"><UnitDefName>kilometres</UnitDefName><UnitDefCode>0x01</UnitDefCode></UnitDef>')
    block = element("FBlock", "<FBlockID>0x22</FBlockID><FBlockName>Block</FBlockName>", *functions)
    return element("FunctionCatalog", block, element("Definition", types, unit))


class Accessibility(PageTest):
    def violations(self):
        self.js(AXE.read_text(encoding="utf-8"))
        found = self.driver.execute_async_script(
            "const done = arguments[0];"
            "axe.run(document, {resultTypes: ['violations']}).then((result) => done(result))")
        self.assertGreater(len(found["passes"]), 15)
        return [(violation["id"], [node["html"][:120] for node in violation["nodes"][:3]])
                for violation in found["violations"]]

    def test_axe_finds_nothing(self):
        for name, page, address in VIEWS:
            self.open(page, address)
            for scheme in ["light", "dark"]:
                with self.subTest(f"{name}, {scheme}"):
                    self.browser.set_media(scheme=scheme)
                    self.assertEqual(self.violations(), [])

    def test_axe_finds_nothing_in_the_search(self):
        for scheme in ["light", "dark"]:
            with self.subTest(scheme):
                self.browser.set_media(scheme=scheme)
                self.open("roadster")
                self.search("volume")
                self.assertEqual(self.violations(), [])

    def test_colours_are_those_of_the_system(self):
        self.open("roadster")
        colours = []
        for scheme in ["light", "dark"]:
            self.browser.set_media(scheme=scheme)
            colours.append(self.js("return getComputedStyle(document.body).backgroundColor"))
        self.assertEqual(colours, ["rgb(255, 255, 255)", "rgb(20, 24, 28)"])

    def test_headings_and_landmarks(self):
        self.open("roadster", "22.402")
        self.assertEqual(self.js("return [...document.querySelectorAll('h1, h2, h3')].map((e) => e.tagName)"),
                         ["H1", "H2", "H2", "H3", "H3", "H2", "H3"])
        self.assertEqual(self.js("return document.querySelectorAll('main, search, nav, body > header').length"), 4)
        self.assertEqual(self.js("return [...document.querySelectorAll('th')].filter((e) => !e.scope).length"), 0)
        self.assertEqual(self.js("return document.documentElement.lang"), "en")


class Sizes(PageTest):
    def test_no_width_makes_the_page_scroll_to_the_side(self):
        for _, page, address in VIEWS:
            self.open(page, address)
            for width in [320, 390, 640, 1280, 2000]:
                with self.subTest(f"{address} {width}"):
                    self.browser.resize(width, HEIGHT)
                    self.assertLessEqual(self.js("return document.documentElement.scrollWidth"), width)
                    drawings = self.js("return [...document.querySelectorAll('.drawing')]"
                                       ".map((e) => e.getBoundingClientRect().right)")
                    self.assertLessEqual(max(drawings, default=0), width)

    def test_the_search_fits_a_phone(self):
        self.browser.resize(320, 640)
        self.open("roadster")
        self.search("volume")
        box = self.js("const b = document.getElementById('panel').getBoundingClientRect(); return [b.left, b.right]")
        self.assertGreaterEqual(box[0], 0)
        self.assertLessEqual(box[1], 320)

    def test_twice_the_size(self):
        # What a window of 1280 has left when everything is twice as large.
        self.browser.resize(640, 450, scale=2)
        for _, page, address in VIEWS:
            with self.subTest(address):
                self.open(page, address)
                self.assertLessEqual(self.js("return document.documentElement.scrollWidth"), 640)
                # Headings are not covered by the bar.
                self.js("document.querySelector('h2').scrollIntoView()")
                self.assertGreater(self.js("return document.querySelector('h2').getBoundingClientRect().top"),
                                   self.js("return document.querySelector('.bar').getBoundingClientRect().bottom") - 1)


class Steps(PageTest):
    """Only what is seen is built."""

    def test_long_lists_grow_when_they_are_asked_to(self):
        self.open(page_of_text("large.xml", large_catalog(functions=250, values=150)), "22")
        self.assertEqual(len(self.table(".functions")), 101)
        self.assertEqual(self.text("main .more"), "Show 100 more of 250 functions")
        self.find("main .more").click()
        self.assertEqual(self.text("main .more"), "Show 50 more of 250 functions")
        self.assertEqual(self.js("return document.activeElement.cells[0].innerText"), "064")
        self.find("main .more").click()
        self.assertEqual(len(self.table(".functions")), 251)
        self.assertEqual(self.texts("main .more"), [])
        self.assertEqual(self.js("return [...document.querySelectorAll('.short')].pop().innerText"), "Number 249.")
        # Who comes back finds the list as it was.
        self.scroll(5000)
        self.go("22.000")
        self.driver.back()
        self.wait_for("22")
        self.assertEqual(len(self.table(".functions")), 251)
        self.assertEqual(self.js("return window.scrollY"), 5000)
        # On paper descriptions are there as soon as their rows.
        self.go("")
        self.go("22")
        self.assertEqual(self.js("window.dispatchEvent(new Event('beforeprint'));"
                                 "return [...document.querySelectorAll('.short')].pop().innerText"), "Number 249.")

    def nodes(self):
        return self.js("return document.querySelectorAll('main *').length")

    def test_a_view_has_a_bounded_number_of_rows(self):
        inner = record([(f"Inner{place}", enumeration(50)) for place in range(40)])
        self.open(page_of_text("deep.xml", catalog_of(
            function(1, [(f"P{place}", enumeration(100)) for place in range(200)]),
            function(2, [("Deep", record([(f"Outer{place}", inner) for place in range(40)]))]),
            function(3, [("Long", record([(f"Field{place}", number()) for place in range(300)]))]))), "22.001")
        self.assertLess(self.nodes(), 12000)
        self.assertEqual(len(self.texts("section.parameter")), 40)
        self.assertEqual(self.texts("section[aria-labelledby=parameters] > .more"),
                         ["Show 40 more of 200 parameters"])
        self.assertEqual(self.texts("section.parameter:last-child .more"), ["Show 60 of 100 values"])
        self.js("document.querySelector('section.parameter:last-child .more').click()")
        self.assertEqual(self.texts("section.parameter:last-child .more"), ["Show 40 more of 100 values"])
        self.go("22.002")
        self.assertLess(self.nodes(), 12000)
        # Every row of a drawing can be reached.
        self.go("22.003")
        rows = "return document.querySelectorAll('.drawing .byte').length"
        self.assertEqual(self.js(rows), 128)
        self.assertEqual(self.text(".group .more"), "Show 128 more of 300 rows")
        self.js("window.dispatchEvent(new Event('beforeprint'))")
        self.assertEqual(self.js(rows), 300)
        self.assertEqual(self.texts("main .more"), [])

    def test_nothing_is_cut_off_on_paper(self):
        name = "A_rather_long_name_of_a_parameter"
        self.open(page_of_text("wide.xml", catalog_of(*(
            function(count, [(f"{name}_{place}", number("Word")) for place in range(count)])
            for count in [3, 6, 7, 12, 30, 60]))), "22.003")
        # Paper of A4 between its margins; what is up to twice as wide is made smaller.
        width = round((210 - 2 * 14) / 25.4 * 96)
        for count, most in [(3, 1), (6, 1), (7, 1), (12, 1), (30, 2), (60, 1)]:
            with self.subTest(count):
                self.browser.set_media()
                self.go(f"22.{count:03X}")
                self.browser.set_media("print")
                self.browser.resize(width, HEIGHT)
                right = self.js("return Math.max(...[...document.querySelectorAll('main th, main td, main .name, main td *, "
                                "main .drawing, main .messages *')].map((e) => e.getBoundingClientRect().right))")
                self.assertLessEqual(right, most * width)
                self.assertTrue(self.find(".operations td:last-child code").is_displayed())
        # What is left out of a table that is too wide stands at the parameters.
        self.assertEqual(self.text("section.parameter:last-child .in"), "Status 40")

    def test_paper_has_everything_of_a_function(self):
        self.open(page_of_text("large.xml", large_catalog(functions=2, values=150)), "22.000")
        self.assertEqual(len(self.table(".small")), 61)
        pages = self.browser.command("Page.printToPDF", preferCSSPageSize=True)
        self.assertGreater(len(pages["data"]), 1000)
        self.assertEqual(len(self.table(".small")), 151)

    def test_paper_has_no_buttons_and_no_search(self):
        self.open("roadster", "22.402")
        self.browser.set_media("print", "dark")
        hidden = [".bar", ".copy", ".steps"]
        self.assertEqual([self.find(selector).is_displayed() for selector in hidden], [False] * len(hidden))
        self.assertEqual(self.js("return getComputedStyle(document.body).backgroundColor"), "rgb(255, 255, 255)")
        self.assertEqual(self.js("return getComputedStyle(document.querySelector('h1')).color"), "rgb(0, 0, 0)")


if __name__ == "__main__":
    unittest.main()
