"""page.md: what it tells to start, and its pictures."""

import re
import shutil
import struct
import subprocess

from documents import CATALOG, DOCS, SOURCE, DocumentTest, blocks, read

MOST_BYTES = 150_000


class PageDocument(DocumentTest):
    def test_its_command_writes_a_page(self):
        for name in ["roadster.xml", "fcat.dtd"]:
            shutil.copy(SOURCE / "examples" / name, self.dir)
        (command,) = blocks(read("page.md"), "sh")
        self.assertTrue(command.startswith("tarvex-catalog "))
        arguments = command.split()[1:]
        result = subprocess.run([CATALOG, *arguments], cwd=self.dir, capture_output=True, timeout=120, check=False)
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, b"", b""))
        self.assertTrue((self.dir / arguments[-1]).read_bytes().startswith(b"<!doctype html>"))

    def test_its_pictures_are_there_and_small(self):
        shown = set(re.findall(r"\(page/([\w-]+\.png)\)|src=\"page/([\w-]+\.png)\"", read("page.md")))
        names = {first or second for first, second in shown}
        self.assertEqual(names, {path.name for path in (DOCS / "page").iterdir()})
        for name in names:
            with self.subTest(name):
                picture = (DOCS / "page" / name).read_bytes()
                self.assertTrue(picture.startswith(b"\x89PNG\r\n\x1a\n"))
                self.assertLess(len(picture), MOST_BYTES)
                width, _ = struct.unpack(">II", picture[16:24])
                self.assertGreaterEqual(width, 390)

    def test_the_readme_shows_one(self):
        self.assertIn("](docs/page/function.png)", (SOURCE / "README.md").read_text(encoding="utf-8"))
