"""sqlite.md shows the tables of a written file, and queries with what they tell about the example."""

import re
import sqlite3

from documents import SOURCE, DocumentTest, blocks, first_cells, read, section


def split_table(text):
    """The cells of a table whose second line underlines the columns with dashes."""
    lines = text.splitlines()
    spans = [match.span() for match in re.finditer("-+", lines[1])]
    ends = [start for start, _ in spans[1:]] + [None]
    return [[line[start:end].rstrip() for (start, _), end in zip(spans, ends)] for line in lines[:1] + lines[2:]]


def description(connection):
    """Tables with their columns (name, type, not null, default, primary key) and foreign keys."""
    tables = [name for name, in connection.execute("SELECT name FROM sqlite_master WHERE type = 'table'")]
    return {
        name: ([row[1:] for row in connection.execute(f"PRAGMA table_info({name})")],
               sorted(row[2:5] for row in connection.execute(f"PRAGMA foreign_key_list({name})")))
        for name in tables
    }


class Sqlite(DocumentTest):
    def setUp(self):
        super().setUp()
        self.text = read("sqlite.md")
        self.tables, self.scaling_table, *self.queries = blocks(self.text, "sql")
        self.example = sqlite3.connect(self.convert_example("roadster.sqlite"))
        self.addCleanup(self.example.close)

    def test_the_tables_shown_are_those_of_a_written_file(self):
        shown = sqlite3.connect(":memory:")
        self.addCleanup(shown.close)
        shown.executescript(self.tables)
        self.assertEqual(len(description(shown)), 10)
        self.assertEqual(description(self.example), description(shown))

    def test_the_statements_shown_are_those_of_a_written_file(self):
        statements = [sql for sql, in self.example.execute("SELECT sql FROM sqlite_master WHERE type = 'table'")]
        self.assertEqual([re.sub(r"\s+", " ", sql) for sql in statements],
                         [re.sub(r"\s+", " ", sql) for sql in self.tables.rstrip(";").split(";\n")])

    def scaled_example(self):
        settings = (SOURCE / "examples" / "TARVEX.ini").read_text(encoding="utf-8")
        self.write("TARVEX.ini", settings.replace("[Conversion]", "[Conversion]\nWriteScaling=1"))
        scaled = sqlite3.connect(self.convert("roadster.xml", "scaled.sqlite"))
        self.addCleanup(scaled.close)
        return scaled

    def test_the_table_of_scalings_is_that_of_a_file_that_has_some(self):
        shown = sqlite3.connect(":memory:")
        self.addCleanup(shown.close)
        shown.executescript(self.tables + self.scaling_table)
        self.assertEqual(description(self.scaled_example()), description(shown))

    def test_every_table_and_column_is_explained(self):
        explained = {name.split(".")[-1] for name in first_cells(section(self.text, "Tables"))}
        tables = description(self.scaled_example())
        # Names of other tables' rows, and what says enough for itself.
        plain = {"name", "text", "value", "definition_id", "node_id", "message_id", "signal_id"}
        columns = {column[0] for described, _ in tables.values() for column in described}
        self.assertEqual((set(tables) | columns) - explained - plain, set())
        self.assertEqual(explained - set(tables) - columns, set())

    def test_the_indexes_named_are_those_of_a_written_file(self):
        named = re.search(r"There are indexes on\n(.*?)\n\n", self.text, re.DOTALL).group(1)
        rows = self.example.execute("SELECT sql FROM sqlite_master WHERE type = 'index' AND sql IS NOT NULL")
        written = [re.search(r" ON (\S+)$", sql).group(1) for sql, in rows]
        self.assertEqual(sorted(re.findall(r"`([^`]+)`", named)), sorted(written))
        self.assertEqual(len(written), 5)

    def test_the_numbers_of_the_file_are_those_named(self):
        named = re.findall(r"`PRAGMA (\w+)` is (\w+)", self.text)
        self.assertEqual(named, [("application_id", "0x564F524E"), ("user_version", "1")])
        for pragma, value in named:
            self.assertEqual(self.example.execute(f"PRAGMA {pragma}").fetchone(), (int(value, 0),))

    def test_queries_give_what_is_shown(self):
        results = blocks(self.text, "text")
        self.assertEqual((len(self.queries), len(results)), (6, 6))
        for query, result in zip(self.queries, results):
            with self.subTest(query.splitlines()[0]):
                cursor = self.example.execute(query)
                header = [column[0] for column in cursor.description]
                rows = [["" if cell is None else str(cell) for cell in row] for row in cursor]
                self.assertGreater(len(rows), 1)
                self.assertEqual([header, *rows], split_table(result))

    def test_references_hold_and_ids_count_from_1(self):
        self.assertEqual(self.example.execute("PRAGMA foreign_key_check").fetchall(), [])
        for table in ("attribute_definition", "node", "message", "signal"):
            with self.subTest(table):
                ids = [id for id, in self.example.execute(f"SELECT id FROM {table} ORDER BY id")]
                self.assertEqual(ids, list(range(1, len(ids) + 1)))
                self.assertGreater(len(ids), 0)
        for table in ("attribute_choice", "value_description"):
            with self.subTest(table):
                self.assertEqual(self.example.execute(f"SELECT min(position) FROM {table}").fetchone(), (0,))
