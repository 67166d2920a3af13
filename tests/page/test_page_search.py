"""Finding places: by words and addresses, with filters, by links, and with the keyboard alone."""

import unittest

from browser import PageTest
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

# A key of each kind, and the first results: what it is, the text, and where it is.
KEYS = [
    ("22", ["block | AudioAmp | 22"]),
    ("22.402", ["function | AudioAmp.Bass & Treble | 22.402"]),
    ("22.402.C", ["function | AudioAmp.Bass & Treble | 22.402.C"]),
    ("22.01.402.c", ["function | AudioAmp.Bass & Treble | 22.402.C"]),
    ("AudioAmp.Vol", ["function | AudioAmp.Volume | 22.400"]),
    ("audioa", ["block | AudioAmp | 22 AudioAmp"]),
    ("bass & tr", ["function | Bass & Treble | 22.402 AudioAmp.Bass & Treble"]),
    ("BassTreble_S", ["message | AudioAmp_BassTreble_Set | 22.402.0 AudioAmp.Bass & Treble",
                      "message | AudioAmp_BassTreble_Status | 22.402.C AudioAmp.Bass & Treble"]),
    ("nsteps", ["parameter | NSteps | 22.400 AudioAmp.Volume"]),
    ("trim", ["function | ChannelTrim | 22.408 AudioAmp.ChannelTrim"]),
    ("delay_m1", ["signal | Delay_M1 | 22.409 AudioAmp.SpeakerSetup"]),
    ("rock", ["value | 0x21 Rock & Pop of Preset | 22.404 AudioAmp.EqualizerPreset"]),
    ("0x21", ["value | 0x21 Rock & Pop of Preset | 22.404 AudioAmp.EqualizerPreset"]),
    ("tweeter_l", ["signal | Tweeter_left | 22.406 AudioAmp.SpeakerMask"]),
    ("audible", ["bit | 0 muted / audible of Mute | 22.113 AudioAmp.Mute"]),
    ("°c", ["function | Temperatur °C | 06.201 Diagnosis.Temperatur °C",
            "unit | °C of Celsius | 06.201 Diagnosis.Temperatur °C"]),
    ("four channels", ["description | Amplifier with four channels. Loudspeakers <front> and <rear> are driven apart. "
                       "| 22 AudioAmp"]),
    ("refused", ["description | Why the command was refused. | 06.200 Diagnosis.ResetCounters"]),
]


class Search(PageTest):
    def test_each_kind_of_key(self):
        self.open("roadster")
        for key, expected in KEYS:
            with self.subTest(key):
                self.search(key)
                self.assertEqual([" ".join(row.split()) for row in self.results()][:len(expected)], expected)

    def test_what_is_found_is_marked_and_counted(self):
        self.open("roadster")
        self.search("rock")
        self.assertEqual(self.texts("#results mark"), ["Rock"])
        self.assertEqual(self.text("#found"), "1 result")
        self.search("nothing of the kind")
        self.assertEqual(self.text("#found"), "Nothing found")
        self.search("e")
        self.assertEqual(self.text("#found"), "The first 50 results")
        self.assertEqual(self.find("#found").get_attribute("role"), "status")

    def test_results_come_while_one_types(self):
        self.open("roadster")
        self.find("#search").click()
        counts = []
        for end, letter in enumerate("equalizerp", 1):
            self.press(letter)
            self.wait_for_results("equalizerp"[:end])
            counts.append(len(self.results()))
        self.assertEqual(counts, sorted(counts, reverse=True))
        self.assertEqual(self.results()[0], "function | EqualizerPreset | 22.404 AudioAmp.EqualizerPreset")

    def test_more_results_are_there_when_they_are_asked_for(self):
        self.open("roadster")
        self.search("e")
        self.assertEqual(len(self.results()), 51)
        before = self.results()
        self.driver.find_elements(By.CSS_SELECTOR, "#results li")[50].click()
        self.wait_until("return document.querySelectorAll('#results li').length > 51")
        self.assertEqual(self.results()[:50], before[:50])

    def set_filters(self, faulty=False, incomplete=False, of_class="all", op_type="all"):
        boxes = self.driver.find_elements(By.CSS_SELECTOR, "#filters input")
        for box, is_wanted in zip(boxes, [faulty, incomplete]):
            if box.is_selected() != is_wanted:
                box.click()
        for choice, wanted in zip(self.driver.find_elements(By.CSS_SELECTOR, "#filters select"), [of_class, op_type]):
            self.js("arguments[0].value = [...arguments[0].options].find((o) => o.text === arguments[1]).value;"
                    "arguments[0].dispatchEvent(new Event('change'))", choice, wanted)

    def test_filters(self):
        self.open("roadster")
        self.find("#search").click()
        rows = [
            ({"faulty": True}, 14, "22.402 AudioAmp.Bass & Treble"),
            ({"incomplete": True}, 7, "40.202 Tuner Süd/West.SignalStrength"),
            ({"faulty": True, "incomplete": True}, 7, "40.202 Tuner Süd/West.SignalStrength"),
            ({"of_class": "MUnclassified"}, 3, "22.101 AudioAmp.Allocate"),
            ({"op_type": "3 Increment / OpType3"}, 2, "22.400 AudioAmp.Volume"),
            ({"op_type": "B OpTypeB / Processing", "of_class": "MUnclassified"}, 3, "22.101 AudioAmp.Allocate"),
        ]
        for filters, count, first in rows:
            with self.subTest(str(filters)):
                self.set_filters(**filters)
                self.wait_until("return document.getElementById('found').textContent.startsWith(arguments[0])",
                                f"{count} result")
                results = self.results()
                self.assertEqual(len(results), count)
                self.assertEqual(results[0].split(" | ")[2], first)

    def test_a_filter_leaves_of_what_is_found_what_passes(self):
        self.open("roadster")
        self.search("signal")
        self.assertGreater(len(self.results()), 3)
        self.set_filters(faulty=True)
        self.wait_until("return [...document.querySelectorAll('#results .where')]"
                        ".every((e) => /SignalStrength/.test(e.textContent))")
        self.assertGreater(len(self.results()), 0)


class Places(PageTest):
    def places(self):
        return self.js("return location.hash"), self.heading()

    def test_links_back_and_forward(self):
        self.open("roadster")
        for link, address in [("Phone", "50"), ("NetworkInfo", "50.307"), ("C Status", "50.307.C"),
                              ("Previous", "50.306"), ("50 Phone", "50"), ("Catalog", "")]:
            self.find("main").find_element(By.LINK_TEXT, link).click()
            self.wait_for(address)
        for address in ["50", "50.306", "50.307.C", "50.307", "50", ""]:
            self.driver.back()
            self.wait_for(address)
        self.driver.forward()
        self.wait_for("50")
        self.assertEqual(self.places(), ("#50", "Phone"))
        self.driver.forward()
        self.wait_for("50.307")
        self.assertEqual(self.places(), ("#50.307", "NetworkInfo"))

    def test_back_leads_to_where_one_was(self):
        self.browser.resize(width=1280, height=300)
        self.open("roadster", "31")
        for link, address in [("Catalog", ""), ("Eject", "31.208")]:
            self.scroll(350)
            self.js("arguments[0].click()", self.find("main").find_element(By.LINK_TEXT, link))
            self.wait_for(address)
            self.assertEqual(self.js("return window.scrollY"), 0)
            self.driver.back()
            self.wait_for("31")
            self.assertEqual(self.js("return window.scrollY"), 350)
        self.driver.forward()
        self.wait_for("31.208")
        self.driver.back()
        self.wait_for("31")
        self.assertEqual(self.js("return window.scrollY"), 350)
        self.driver.forward()
        self.wait_for("31.208")
        self.assertEqual(self.js("return window.scrollY"), 0)

    def test_previous_and_next_lead_from_block_to_block(self):
        self.open("roadster", "22.000")
        self.find("main").find_element(By.LINK_TEXT, "Previous").click()
        self.wait_for("06.202")
        self.assertEqual(self.heading(), "FaultMemory")
        self.find("main").find_element(By.LINK_TEXT, "Next").click()
        self.wait_for("22.000")
        self.open("roadster", "06.010")
        self.assertEqual(self.texts(".step"), ["Next"])
        self.open("roadster", "60.205")
        self.assertEqual(self.texts(".step"), ["Previous"])

    def test_a_link_is_copied(self):
        self.open("roadster", "22.402.C")
        # Who may read the clipboard is asked by the test, not by the page.
        self.browser.command("Browser.grantPermissions", permissions=["clipboardReadWrite", "clipboardSanitizedWrite"])
        self.find(".copy").click()
        self.wait_until("return document.querySelector('.copy').textContent === 'Copied'")
        copied = self.driver.execute_async_script("navigator.clipboard.readText().then(arguments[0])")
        self.assertEqual(copied, self.driver.current_url)
        self.assertTrue(copied.endswith("roadster.html#22.402.C"))
        said = self.js("return document.querySelector('.copy').nextSibling.textContent")
        self.assertEqual(said, "The link is copied")

    def test_the_title_tells_the_place(self):
        self.open("roadster")
        self.assertEqual(self.driver.title, "roadster.xml")
        self.go("22.402")
        self.assertEqual(self.driver.title, "22.402 Bass & Treble – roadster.xml")


class Keyboard(PageTest):
    def focused(self):
        return self.js("const e = document.activeElement; return e.id || e.innerText || e.tagName")

    def test_from_the_slash_to_a_function(self):
        self.open("roadster")
        self.press("/")
        self.assertEqual(self.focused(), "search")
        self.press("volume")
        self.wait_for_results("volume")
        self.assertEqual(self.find("#search").get_attribute("aria-expanded"), "true")
        self.press(Keys.ARROW_DOWN, Keys.ARROW_DOWN, Keys.ARROW_DOWN)
        active = self.find("#search").get_attribute("aria-activedescendant")
        self.assertEqual(active, "result-2")
        self.assertEqual(self.find(f"#{active}").get_attribute("aria-selected"), "true")
        self.press(Keys.ARROW_UP)
        self.assertEqual(self.find("#search").get_attribute("aria-activedescendant"), "result-1")
        where = self.results()[1].split(" | ")[2].split()[0]
        self.press(Keys.ENTER)
        self.wait_for(where)
        self.assertEqual(self.focused(), "Volume")
        self.assertFalse(self.find("#panel").is_displayed())

    def test_enter_takes_the_first(self):
        self.open("roadster", "31")
        self.press("/")
        self.press("22.402")
        self.wait_for_results("22.402")
        self.press(Keys.ENTER)
        self.wait_for("22.402")

    def type_at_once(self, *words):
        """Types each word with Enter behind it, before the page does anything else."""
        self.js("const field = document.getElementById('search');"
                "for (const word of arguments) {"
                "  field.value = word; field.dispatchEvent(new Event('input'));"
                "  field.dispatchEvent(new KeyboardEvent('keydown', {key: 'Enter'})); }", *words)

    def test_enter_waits_for_the_results_of_what_is_typed(self):
        self.open("roadster")
        self.type_at_once("31.206")  # nothing is unpacked yet
        self.wait_for("31.206")
        self.search("volume")
        self.type_at_once("22.402")  # and not the first that has a volume
        self.wait_for("22.402")
        shown = self.js("return history.length")
        self.type_at_once("volume", "50.307")  # who types on does not mean what was there before
        self.wait_for("50.307")
        self.assertEqual(self.js("return history.length"), shown + 1)

    def test_the_ends_of_the_list(self):
        self.open("roadster")
        self.press("/")
        self.press("volume")
        self.wait_for_results("volume")
        last = f"result-{len(self.results()) - 1}"
        self.press(Keys.ARROW_UP)
        self.assertEqual(self.find("#search").get_attribute("aria-activedescendant"), last)
        self.press(Keys.ARROW_DOWN)
        self.assertIsNone(self.find("#search").get_attribute("aria-activedescendant"))
        self.press(Keys.PAGE_DOWN)
        self.assertEqual(self.find("#search").get_attribute("aria-activedescendant"), last)

    def test_escape_closes_the_results(self):
        self.open("roadster")
        self.press("/")
        self.press("volume")
        self.wait_for_results("volume")
        self.assertTrue(self.find("#panel").is_displayed())
        self.press(Keys.ESCAPE)
        for _ in range(2):
            self.assertFalse(self.find("#panel").is_displayed())
            self.assertEqual(self.find("#search").get_attribute("aria-expanded"), "false")
            self.assertEqual(self.find("#search").get_attribute("value"), "volume")
            self.press(Keys.ESCAPE)

    def test_the_slash_leads_back_from_the_filters(self):
        self.open("roadster")
        for tabs in [1, 3]:  # a box, and a list
            with self.subTest(tabs):
                self.find("#search").click()
                self.press(*[Keys.TAB] * tabs)
                self.assertNotEqual(self.focused(), "search")
                self.press("/")
                self.assertEqual(self.focused(), "search")
                self.assertEqual(self.find("#search").get_attribute("value"), "")

    def test_the_tabulator_reaches_everything_in_its_order(self):
        self.open("roadster", "22.402")
        reached = []
        for _ in range(14):
            self.press(Keys.TAB)
            reached.append(self.js(
                "const e = document.activeElement; const label = e.parentElement;"
                "if (e.getAttribute('aria-label') || e.id) return e.getAttribute('aria-label') ?? e.id;"
                "return /INPUT|SELECT/.test(e.tagName) ? label.firstChild.textContent.trim() || label.innerText"
                " : e.innerText"))
        self.assertEqual([" ".join(text.split()) for text in reached], [
            "skip", "Catalog 3.1 of 2024-06-03", "search", "with faults", "incomplete", "Class", "OPType", "Catalog", "22 AudioAmp",
            "Previous: Balance", "Next: Loudness", "Copy link",
            "Operations of Bass & Treble, with the positions of parameters", "0 Set"][:14])

    def test_the_skip_link_leads_to_the_content(self):
        self.open("roadster", "22.402")
        self.press(Keys.TAB)
        self.assertEqual(self.focused(), "skip")
        self.assertGreaterEqual(self.js("return document.activeElement.getBoundingClientRect().top"), 0)
        self.press(Keys.ENTER)
        self.assertEqual(self.focused(), "Bass & Treble")
        self.assertEqual(self.js("return location.hash"), "#22.402")

    def test_focus_is_seen(self):
        self.open("roadster", "22.402")
        for _ in range(13):
            self.press(Keys.TAB)
            outline = self.js("const style = getComputedStyle(document.activeElement);"
                              "return [style.outlineStyle, style.outlineWidth]")
            self.assertNotEqual(outline[0], "none")
            self.assertNotEqual(outline[1], "0px")


if __name__ == "__main__":
    unittest.main()
