"""tarvex-catalog page from outside: exit status, what it says, and the file that it writes."""

import os
import shutil
import subprocess
import unittest

from support import CATALOG, SOURCE, ProgramTest

CATALOG_PROGRAM = os.environ["TARVEX_CATALOG"]
OLD = b"what was there before"


class Page(ProgramTest):
    def setUp(self):
        super().setUp()
        for name in ["roadster.xml", "fcat.dtd"]:
            shutil.copy(SOURCE / "examples" / name, self.dir)

    def write_page(self, catalog, page, *arguments, stdin=b"", limit=None):
        command = [CATALOG_PROGRAM, "page", str(catalog), str(page), *arguments]
        if limit is not None:
            command = ["/bin/sh", "-c", f'ulimit -f {limit}; exec "$0" "$@"', *command]
        result = subprocess.run(command, cwd=self.dir, input=stdin, capture_output=True, timeout=120, check=False)
        self.assertEqual(result.stdout, b"")
        return result.returncode, result.stderr.decode()

    def assert_no_temporary_file(self):
        self.assertEqual([name for name in os.listdir(self.dir) if name.startswith(".kestrel-")], [])

    def test_equal_catalogs_have_equal_pages(self):
        self.assertEqual(self.write_page("roadster.xml", "a.html"), (0, ""))
        (self.dir / "other").mkdir()
        for name in ["roadster.xml", "fcat.dtd"]:
            shutil.copy(self.dir / name, self.dir / "other")
        self.assertEqual(self.write_page(self.dir / "other" / "roadster.xml", "b.html"), (0, ""))
        page = (self.dir / "a.html").read_bytes()
        self.assertEqual((self.dir / "b.html").read_bytes(), page)
        self.assertTrue(page.startswith(b"<!doctype html>") and page.endswith(b"</html>\n"))
        self.assertNotIn(str(self.dir).encode(), page)

    def test_settings_say_how_the_catalog_is_read(self):
        shutil.copy(SOURCE / "examples" / "convertible.xml", self.dir)
        self.write("old.ini", "[Import]\nFCatImportValidate=0\nFCatImportNewer=0\n")
        self.assertEqual(self.write_page("convertible.xml", "new.html"), (0, ""))
        self.assertEqual(self.write_page("convertible.xml", "old.html", "--settings", "old.ini"), (0, ""))
        self.assertNotEqual((self.dir / "new.html").read_bytes(), (self.dir / "old.html").read_bytes())
        status, errors = self.write_page("roadster.xml", "page.html", "--settings", "missing.ini")
        self.assertEqual((status, errors), (2, "tarvex-catalog: can't read 'missing.ini'\n"))

    def test_a_catalog_on_standard_input(self):
        self.assertEqual(self.write_page("-", "page.html", stdin=CATALOG.encode()), (0, ""))
        self.assertIn(b"<title>standard input</title>", (self.dir / "page.html").read_bytes())

    def test_a_catalog_that_cannot_be_read_has_no_page(self):
        catalog = CATALOG.encode()
        rows = {
            "cut.xml": catalog[:len(catalog) // 2],
            "zero.xml": catalog.replace(b"Volume", b"Vol\0ume"),
            "empty.xml": b"",
            "text.xml": b"no catalog",
            "other.xml": b"<Other/>",
            "no_block.xml": b"<FunctionCatalog/>",
        }
        for name, content in rows.items():
            for old in [None, OLD]:
                with self.subTest(name, old=old):
                    self.write(name, content)
                    if old:
                        self.write("page.html", old)
                    status, errors = self.write_page(name, "page.html")
                    self.assertEqual(status, 2)
                    self.assertRegex(errors, r"\Atarvex-catalog: [^\n]+\n\Z")
                    self.assertEqual((self.dir / "page.html").exists(), old is not None)
            (self.dir / "page.html").unlink()
        status, errors = self.write_page("missing.xml", "page.html")
        self.assertEqual((status, errors), (2, "tarvex-catalog: can't read 'missing.xml'\n"))

    def test_nothing_that_is_read_is_written_over(self):
        self.write("my.ini", "[Import]\nFCatImportValidate=0\n")
        os.symlink("roadster.xml", self.dir / "link.html")
        for page in ["roadster.xml", "./roadster.xml", "link.html", "fcat.dtd", "my.ini"]:
            with self.subTest(page):
                before = (self.dir / page).read_bytes()
                status, errors = self.write_page("roadster.xml", page, "--settings", "my.ini")
                what = "settings are" if page == "my.ini" else "catalog is"
                self.assertEqual(status, 2)
                self.assertEqual(errors, f"tarvex-catalog: can't write '{page}': the {what} read from it\n")
                self.assertEqual((self.dir / page).read_bytes(), before)

    def test_what_cannot_become_a_page(self):
        (self.dir / "directory").mkdir()
        os.mkfifo(self.dir / "fifo")
        os.symlink("a", self.dir / "b")
        os.symlink("b", self.dir / "a")
        for page in ["directory", "directory/", ".", "", "fifo", "a", "missing/page.html", "/dev/null", "n" * 300]:
            with self.subTest(page[:20]):
                status, errors = self.write_page("roadster.xml", page)
                self.assertEqual((status, errors), (2, f"tarvex-catalog: can't write '{page}'\n"))
                self.assert_no_temporary_file()

    def test_a_page_is_not_written_to_standard_output(self):
        self.assertEqual(self.write_page("roadster.xml", "-"),
                         (2, "tarvex-catalog: can't write '-': a page becomes a file\n"))
        self.assertFalse((self.dir / "-").exists())
        self.assertEqual(self.write_page("roadster.xml", "./-"), (0, ""))

    def test_a_link_stays_and_the_file_behind_it_is_replaced(self):
        self.write("real/page.html", OLD)
        os.symlink("real/page.html", self.dir / "link.html")
        self.assertEqual(self.write_page("roadster.xml", "link.html"), (0, ""))
        self.assertEqual(os.readlink(self.dir / "link.html"), "real/page.html")
        self.assertTrue((self.dir / "real/page.html").read_bytes().startswith(b"<!doctype html>"))

    def test_no_size_of_a_file_leaves_half_a_page(self):
        self.assertEqual(self.write_page("roadster.xml", "page.html"), (0, ""))
        page = (self.dir / "page.html").read_bytes()
        blocks = -(-len(page) // 512)
        for limit in [0, 1, blocks // 2, blocks - 1, blocks]:
            with self.subTest(limit):
                self.write("page.html", OLD)
                status, errors = self.write_page("roadster.xml", "page.html", limit=limit)
                is_whole = limit >= blocks
                self.assertEqual(status, 0 if is_whole else 2)
                self.assertEqual((self.dir / "page.html").read_bytes(), page if is_whole else OLD)
                self.assertEqual(errors, "" if is_whole else "tarvex-catalog: can't write 'page.html'; what was "
                                                            "there before is unchanged\n")
                self.assert_no_temporary_file()


if __name__ == "__main__":
    unittest.main()
