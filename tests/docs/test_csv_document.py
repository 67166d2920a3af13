"""csv.md shows the table of signals of the example, and explains its columns."""

import csv
import io
import re
import shlex
import subprocess

from documents import DocumentTest, first_cells, read, steps


class Csv(DocumentTest):
    def setUp(self):
        super().setUp()
        self.copy_examples()
        *commands, (self.command, self.rows) = steps(read("csv.md"))
        env = self.with_programs()
        for command, _ in commands:
            subprocess.run(["sh", "-c", command], cwd=self.dir, env=env, timeout=120, check=True,
                           stdout=subprocess.DEVNULL)

    def test_the_rows_are_those_of_the_example(self):
        program, *arguments = shlex.split(self.command)
        self.assertEqual(program, "vorn")
        result = self.vorn(*arguments)
        self.assertEqual(result.stdout.decode(), self.rows.replace("\n", "\r\n"))

    def test_every_column_is_explained_in_order(self):
        rows = list(csv.reader(io.StringIO(self.rows)))
        self.assertEqual(sorted(first_cells(read("csv.md"))), sorted(rows[0]))
        self.assertEqual({len(row) for row in rows}, {21})

    def test_csv_is_refused_as_input(self):
        self.assertEqual(self.vorn("convert", "roadster.vorn", "t.csv").returncode, 0)
        result = self.vorn("show", "t.csv")
        self.assertEqual(result.returncode, 2)
        self.assertTrue(re.search(rb"can be written, not read", result.stderr))
