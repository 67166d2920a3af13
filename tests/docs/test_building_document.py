"""building.md has the options and the versions that CMake asks for."""

import re
import unittest

from documents import SOURCE, first_cells, read, section

TEXT = read("building.md")


def lists_of_cmake():
    return "".join(path.read_text(encoding="utf-8") for path in
                   [SOURCE / "CMakeLists.txt", *(SOURCE / "src").rglob("CMakeLists.txt"), SOURCE / "packaging/CMakeLists.txt"])


def rows(heading):
    """The cells of the table below a heading, without its head."""
    return [[cell.strip() for cell in line.strip("|").split("|")]
            for line in section(TEXT, heading).splitlines() if line.startswith("|")][2:]


class Building(unittest.TestCase):
    def test_options_and_defaults_are_those_of_cmake(self):
        options = dict(re.findall(r'^option\((\w+) "[^"]*" (ON|OFF)\)', lists_of_cmake(), re.MULTILINE))
        described = {row[0].strip("`"): row[1].strip("`") for row in rows("Options")}
        self.assertEqual(len(options), 9)
        self.assertEqual({name: value for name, value in described.items() if name in options}, options)
        cached = set(re.findall(r"^ *set\((\w+) [^\n]* CACHE ", lists_of_cmake(), re.MULTILINE))
        self.assertEqual(cached, {"CMAKE_BUILD_TYPE", "TARVEX_PARSER", "TARVEX_ZSH_COMPLETIONS"})
        self.assertEqual(set(described) - set(options), cached | {"CMAKE_COMPILE_WARNING_AS_ERROR"})
        self.assertEqual(first_cells(section(TEXT, "Options")), list(described))

    def test_versions_are_those_that_cmake_refuses_older_ones_of(self):
        asked = dict(re.findall(r"find_package\((\w+) ([0-9.]+) REQUIRED\)", lists_of_cmake()))
        self.assertEqual(sorted(asked), ["XercesC", "nlohmann_json"])
        wanted = [re.search(r"cmake_minimum_required\(VERSION ([0-9.]+)\)", lists_of_cmake()).group(1), asked["XercesC"],
                  asked["nlohmann_json"]]
        self.assertEqual([row[1] for row in rows("What it needs") if len(row) == 4 and re.fullmatch(r"[0-9.]+", row[1])], wanted)

    def test_every_library_has_its_version_and_its_purpose(self):
        linked = ["Xerces-C", "ICU", "libxml2", "SQLite", "libsodium", "nlohmann-json", "CLI11", "jemalloc"]
        for heading in ["What it needs", "What each is for"]:
            named = " ".join(row[0] for row in rows(heading))
            for library in linked:
                self.assertIn(library, named, heading)


if __name__ == "__main__":
    unittest.main()
