"""reliability.md promises nothing without a test, and its bounds have the names and figures of the code."""

import re

from documents import SOURCE, DocumentTest, read, section

PROMISES = ["Files stay whole", "Signals from the system", "The question, and lost console texts", "When memory ends",
            "Foreign catalogs"]


def holders(text):
    """What stands in the brackets: ("test_x.py", "test_name") for tests of programs, ("", "Suite") for others."""
    for bracket in re.findall(r"\[([^\]]*`[^\]]*)\](?!\()", text):
        for part in bracket.split(";"):
            names = re.findall(r"`([^`]+)`", part)
            file = names.pop(0) if ":" in part else ""
            for name in names:
                yield (name, "") if name.endswith(".py") else (file, name)


class Promises(DocumentTest):
    def test_what_is_said_to_hold_them_is_there(self):
        suites = set()
        for source in (SOURCE / "tests").rglob("*.cpp"):
            suites |= set(re.findall(r"^TEST(?:_F|_P)?\((\w+),", source.read_text(encoding="utf-8"), re.MULTILINE))
        count = 0
        for file, name in holders(read("reliability.md")):
            with self.subTest(file=file, name=name):
                if file:
                    text = (SOURCE / "tests" / "program" / file).read_text(encoding="utf-8")
                    self.assertIn(f"    def {name}(" if name else "", text)
                else:
                    self.assertIn(name, suites)
            count += 1
        self.assertGreater(count, 50)

    def test_every_paragraph_of_promises_names_a_test(self):
        text = read("reliability.md")
        for heading in PROMISES:
            for paragraph in section(text, heading).strip().split("\n\n"):
                with self.subTest(heading=heading, paragraph=paragraph[:40]):
                    self.assertRegex(paragraph, r"\[[^\]]*`")


class Targets(DocumentTest):
    def test_all_are_there(self):
        rows = re.findall(r"^\| `([\w-]+)` \|", section(read("reliability.md"), "Fuzzing"), re.MULTILINE)
        self.assertEqual(rows, sorted(path.name for path in (SOURCE / "fuzz/corpus").iterdir()))


class Bounds(DocumentTest):
    def test_their_names_and_figures_are_those_of_the_code(self):
        code = "".join(path.read_text(encoding="utf-8") for path in (SOURCE / "src").rglob("*.h"))
        code += "".join(path.read_text(encoding="utf-8") for path in (SOURCE / "src").rglob("*.cpp"))
        rows = re.findall(r"^\| [^|]* \| ([^|]*`[^|]*) \|", section(read("reliability.md"), "Limits of what is read and written"),
                          re.MULTILINE)
        self.assertGreater(len(rows), 25)
        for row in rows:
            with self.subTest(row=row):
                name = re.search(r"`(?:\w+::)?(k\w+)`", row)
                if name is None:  # a function
                    continue
                # "64 MiB + 16 bytes per byte": the first figure, as the code may write it.
                figure = re.search(r"` ?:? ?([\d,]+)(?: (MiB|KiB|Mi))?", row)
                number = int(figure.group(1).replace(",", ""))
                scaled = number << {"MiB": 20, "Mi": 20, "KiB": 10, None: 0}[figure.group(2)]
                values = set()
                for written in re.findall(rf"\b{name.group(1)}\b(?:{{| = ){{?([^;,]*)", code):
                    digits = re.sub(r"std::size_t|'|[{}]|U\b", "", written).strip()
                    if re.fullmatch(r"[\d <>*]+", digits):
                        values.add(eval(digits))  # a number or one that is shifted
                self.assertTrue(values & {number, scaled}, values)
