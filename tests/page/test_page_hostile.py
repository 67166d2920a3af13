"""Catalogs that want to be more than text, on a page."""

import unittest
from xml.sax.saxutils import escape, quoteattr

from browser import PageTest, page_of_text

SCRIPT = "<script>window.hit = 1</script>"
# What stands in every name and text, one after the other, and how people see it.
TEXTS = [
    (SCRIPT, SCRIPT),
    ("</script><script>window.hit = 2</script>", "</script><script>window.hit = 2</script>"),
    ('"><img src=x onerror="window.hit = 3">', '"><img src=x onerror="window.hit = 3">'),
    ("'><svg/onload=window.hit=4>", "'><svg/onload=window.hit=4>"),
    ("]]><!-- -->", "]]><!-- -->"),
    ("javascript:window.hit=5", "javascript:window.hit=5"),
    ("{{data}} ${window.hit=6} \\u003cscript\\u003e", "{{data}} ${window.hit=6} \\u003cscript\\u003e"),
    ("a\u2028b\u2029c", "a‹U+2028›b‹U+2029›c"),
    ("gnp.\u202Eexe\u200F \u2066x\u2069", "gnp.‹U+202E›exe‹U+200F› ‹U+2066›x‹U+2069›"),
    ("\ufeffzero\u200bwidth", "‹U+FEFF›zero‹U+200B›width"),
    ("می\u200cخواهم 👩\u200d🔧", "می\u200cخواهم 👩\u200d🔧"),
    ("مرحبا Lautstärke 音量 🔊", "مرحبا Lautstärke 音量 🔊"),
]


def catalog(text):
    """A catalog that has the text wherever a catalog has one."""
    words = escape(text)
    return f"""<?xml version="1.0" encoding="UTF-8"?>
<FunctionCatalog>
  <CatalogVersion><Release>{words}</Release><Date>{words}</Date></CatalogVersion>
  <FBlock><FBlockID>0x22</FBlockID><FBlockKind>{words}</FBlockKind><FBlockName>{words}</FBlockName>
    <FBlockDescription>{words}</FBlockDescription>
    <FBlockVersion><Release>{words}</Release><Date>{words}</Date></FBlockVersion>
    <Function><FunctionID FunctionSection={quoteattr(text)}>0x400</FunctionID><FunctionName>{words}</FunctionName>
      <FunctionDescription>{words}</FunctionDescription>
      <FunctionClass ClassRef={quoteattr(text)}><Property><PUnclassified>
        <PUParam><ParamName>{words}</ParamName><ParamDescription>{words}</ParamDescription>
          <PUParamOPType><PReportStatus><ParamPos>1</ParamPos></PReportStatus></PUParamOPType>
          <PUParamType><TEnum TypeRef="type_enum" TEnumMax="3"><TEnumValue Code="0x1">{words}</TEnumValue></TEnum>
          </PUParamType></PUParam>
        <PUParam><ParamName>Number</ParamName>
          <PUParamOPType><PReportStatus><ParamPos>2</ParamPos></PReportStatus></PUParamOPType>
          <PUParamType><TNumber><BasisDataType><TUByte TypeRef="type_unsigned_byte"/></BasisDataType>
            <Exponent>0</Exponent><RangeMin>0</RangeMin><RangeMax>9</RangeMax><Step>1</Step><Unit UnitRef="unit"/>
          </TNumber></PUParamType></PUParam>
        <PUParam><ParamName>Bits</ParamName>
          <PUParamOPType><PReportStatus><ParamPos>3</ParamPos></PReportStatus></PUParamOPType>
          <PUParamType><TBool TypeRef="type_boolean"><TBoolField BitPos="0"><BitTrueDesc>{words}</BitTrueDesc>
            <BitFalseDesc>{words}</BitFalseDesc></TBoolField></TBool></PUParamType></PUParam>
        <PUParam><ParamName>Lost {words}</ParamName>
          <PUParamOPType><PReportStatus><ParamPos>4</ParamPos></PReportStatus></PUParamOPType>
          <PUParamType><TString TypeRef={quoteattr(text)}/></PUParamType></PUParam>
      </PUnclassified></Property></FunctionClass></Function>
  </FBlock>
  <Definition>
    <TypeDef TypeID="type_enum"><TDefName>Enum</TDefName><TDefSize>1</TDefSize></TypeDef>
    <TypeDef TypeID="type_boolean"><TDefName>Boolean</TDefName><TDefSize>1</TDefSize></TypeDef>
    <TypeDef TypeID="type_unsigned_byte"><TDefName>Unsigned Byte</TDefName><TDefSize>1</TDefSize></TypeDef>
    <UnitDef UnitID="unit"><UnitDefName>{words}</UnitDefName><UnitDefCode>0x01</UnitDefCode></UnitDef>
  </Definition>
</FunctionCatalog>
"""


class Hostile(PageTest):
    def assert_nothing_runs(self):
        self.assertIsNone(self.js("return window.hit ?? null"))
        self.assertEqual(self.js("return document.querySelectorAll('main script, main img, main svg:not(.drawing), "
                                 "#panel script, #panel img').length"), 0)
        self.assertEqual(self.js("return document.querySelectorAll('script:not([type])').length"), 1)

    def assert_shown(self, text, *selectors):
        for selector in selectors:
            with self.subTest(selector):
                texts = self.js("return [...document.querySelectorAll(arguments[0])].map((e) => e.textContent)",
                                selector)
                self.assertTrue(any(text in shown for shown in texts), texts)

    def test_texts_are_shown_as_texts(self):
        for text, shown in TEXTS:
            with self.subTest(text):
                page = page_of_text("hostile.xml", catalog(text))
                self.open(page)
                self.assert_shown(f"{shown} of {shown}", ".line bdi", "#version")
                self.assert_shown(shown, ".blocks th", ".blocks td:nth-child(3)")
                self.assert_nothing_runs()
                self.go("22")
                self.assert_shown(shown, "h1", ".heading .description", ".functions th", ".functions .short")
                self.assert_nothing_runs()
                self.go("22.400")
                self.assert_shown(shown, "h1", ".trail li:nth-child(2)", ".heading .description", ".parameter .description", ".parameter h3",
                                  ".parameter td",
                                  ".heading .line span:nth-child(2)")
                if "‹U+202E›" not in shown:  # units have no such marks, which the importer takes away
                    self.assert_shown(shown, ".facts dd")
                self.assert_nothing_runs()
                self.search(text.strip("\ufeff"))
                self.assertGreater(len(self.results()), 0)
                self.assert_shown(shown.removeprefix("‹U+FEFF›"), "#results .found")
                self.assert_nothing_runs()

    def test_the_name_of_the_file_is_a_text(self):
        name = '"><img src=x onerror=window.hit=7>&lt; .xml'
        self.open(page_of_text(name, catalog("Text")))
        self.assertEqual(self.driver.title, name)
        self.assertEqual(self.heading(), name)
        self.assert_nothing_runs()

    def test_an_address_is_a_text(self):
        page = page_of_text("small.xml", catalog("Text"))
        self.open(page)
        self.js("location.hash = '<img src=x onerror=window.hit=8>'")
        self.wait_until("return document.querySelector('h1').innerText === 'Nothing here'")
        self.assert_shown("<img src=x onerror=window.hit=8>", "main code")
        self.assert_nothing_runs()
        self.js("location.hash = '%E0%A4%A'")  # no UTF-8
        self.wait_until("return document.querySelector('main code').textContent === '%E0%A4%A'")

    def test_the_policy_refuses_scripts_of_others(self):
        self.open("roadster")
        self.js("const s = document.createElement('script'); s.textContent = 'window.hit = 9'; document.body.append(s);"
                "document.body.setAttribute('onclick', 'window.hit = 10'); document.body.click();"
                "const i = document.createElement('img'); i.src = 'https://example.invalid/x.png';"
                "document.body.append(i)")
        self.assertIsNone(self.js("return window.hit ?? null"))
        messages, _ = self.take_logs()
        self.assertEqual(len([message for message in messages if "Content Security Policy" in message["message"]]), 3)


if __name__ == "__main__":
    unittest.main()
