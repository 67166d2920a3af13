"""What `vorn` says of mistakes: each is named in one line, with what may have been meant."""

import gzip
import sqlite3

from support import SOURCE
from vorn_support import EXAMPLE, ONE, VornTest

EXTENSIONS = ".vorn, .sqlite, .sqlite3, .db, .kcd, .csv"
COMMANDS = "show, list, convert, diff, check, subset, merge"
NEITHER = "this is neither Vorn nor SQLite"
XML = "this is XML; vorn reads Vorn and SQLite"

# The command line, the exit status, and what is said.
MISTAKES = [
    # a command
    ("lst one.vorn", 2, "there is no command 'lst'; did you mean 'list'?"),
    ("Show one.vorn", 2, "there is no command 'Show'; did you mean 'show'?"),
    ("conver one.vorn two.db", 2, "there is no command 'conver'; did you mean 'convert'?"),
    ("lits one.vorn", 2, "there is no command 'lits'; did you mean 'list'?"),
    ("lsit one.vorn", 2, "there is no command 'lsit'; did you mean 'list'?"),
    ("shwo one.vorn", 2, "there is no command 'shwo'; did you mean 'show'?"),
    ("dfif one.vorn two.vorn", 2, "there is no command 'dfif'; did you mean 'diff'?"),
    ("print one.vorn", 2, f"there is no command 'print'; the commands are {COMMANDS}"),
    ("one.vorn", 2, f"there is no command 'one.vorn'; the commands are {COMMANDS}"),
    # an option
    ("--verson", 2, "there is no option '--verson'; did you mean '--version'?"),
    ("list one.vorn --nod Amp", 2, "list: there is no option '--nod'; did you mean '--node'?"),
    ("list --fblok=Amp one.vorn", 2, "list: there is no option '--fblok'; did you mean '--fblock'?"),
    ("diff one.vorn two.vorn --nmaes", 2, "diff: there is no option '--nmaes'; did you mean '--names'?"),
    ("diff one.vorn two.vorn --nmes", 2, "diff: there is no option '--nmes'; did you mean '--names'?"),
    ("list one.vorn -node Amp", 2, "list: there is no option '-node'; did you mean '--node'?"),
    ("list one.vorn -fblock=Phone", 2, "list: there is no option '-fblock'; did you mean '--fblock'?"),
    ("-version", 2, "there is no option '-version'; did you mean '--version'?"),
    ("check one.vorn -x", 2, "check: there is no option '-x'; the options are --help, --format"),
    ("check one.vorn --xyzzy", 2, "check: there is no option '--xyzzy'; the options are --help, --format"),
    # a node, a message, a function
    ("list roadster.vorn --node Pone", 1, "roadster.vorn: there is no node 'Pone'; the nearest are Phone, "
                                          "TunerSdWest and Gateway"),
    ("show roadster.vorn --message Amp_Mte_Set", 1, "roadster.vorn: there is no message 'Amp_Mte_Set'; the nearest are "
                                                    "Amp_Mute_Set, Amp_Mute_SetGet and Amp_Mute_Get"),
    ("show roadster.vorn --message 0x1", 1, "roadster.vorn: there is no message '0x1'; the nearest are "),
    ("list roadster.vorn --function Volum", 1, "roadster.vorn: there is no function 'Volum'; the nearest are Volume, "),
    ("list roadster.vorn --message 60.2.C", 1, "roadster.vorn: there is no message '60.2.C'; the nearest are 60."),
    # one of several
    ("subset roadster.vorn part.vorn --fblock Phone --fblock Gatway", 1,
     "roadster.vorn: there is no function block 'Gatway'; the nearest are Gateway, "),
    ("subset roadster.vorn part.vorn --except --fblock Phone --fblock Gatway", 1,
     "roadster.vorn: there is no function block 'Gatway'; the nearest are Gateway, "),
    ("subset roadster.vorn part.vorn --fblock Phone --node Gateway", 1, "roadster.vorn: no message is all of this at once"),
    # an extension
    ("convert one.vorn out.xlsx", 2, f"out.xlsx: no format has the extension .xlsx; those that there are have {EXTENSIONS}"),
    ("convert one.vorn --force out.json", 2, "out.json: no format has the extension .json; "),
    # what stands there is no database
    ("convert one.vorn catalog.xml.db", 2, "catalog.xml.db: this is XML; --force replaces it"),
    ("convert one.vorn notes", 2, "notes: this is no database; --force replaces it"),
    ("convert one.vorn settings.vorn", 2, "settings.vorn: this is JSON, but no database; --force replaces it"),
    ("convert one.vorn tool.vorn", 2, "tool.vorn: this is JSON, but no database; --force replaces it"),
    ("subset one.vorn schema.vorn --message Ping", 2, "schema.vorn: this is JSON, but no database; "),
    ("merge one.vorn one.vorn comment.kcd", 2, "comment.kcd: this is XML; --force replaces it"),
    ("convert one.vorn other.db", 2, "other.db: this is a SQLite file of another program; --force replaces it"),
    # a catalog instead of a database
    ("show catalog.xml", 2, f"catalog.xml: {XML}"),
    ("convert catalog.xml out.vorn", 2, f"catalog.xml: {XML}"),
    ("diff one.vorn catalog.xml.db", 2, f"catalog.xml.db: {XML}"),
    ("show wide.vorn", 2, f"wide.vorn: {XML}"),
    # other files
    ("check empty.vorn", 2, "empty.vorn: the file is empty; vorn reads Vorn and SQLite"),
    ("check empty.db", 2, "empty.db: the file is empty; vorn reads Vorn and SQLite"),
    ("list .", 2, ".: Is a directory"),
    ("list none.vorn", 2, "none.vorn: No such file or directory"),
    ("convert one.vorn .", 2, ".: can't be written: it is a directory"),
    ("convert one.vorn none/out.vorn", 2, "none/out.vorn: can't be written: No such file or directory"),
    ("convert one.vorn one.vorn/out.vorn", 2, "one.vorn/out.vorn: can't be written: Not a directory"),
    ("convert one.vorn locked.vorn", 2, "locked.vorn: can't be written: it is read-only"),
    ("convert one.vorn --force locked.vorn", 2, "locked.vorn: can't be written: it is read-only"),
    ("show t.csv", 2, "t.csv: CSV files can be written, not read"),
    ("show t.kcd", 2, "t.kcd: KCD files can be written, not read"),
    ("show kcd.vorn", 2, "kcd.vorn: KCD files can be written, not read"),
    ("show notes", 2, f"notes: {NEITHER}"),
    ("show notes.csv", 2, f"notes.csv: {NEITHER}"),
    ("show notes.kcd", 2, f"notes.kcd: {NEITHER}"),
    ("show notes.vorn", 2, "notes.vorn: line 1: "),
    ("diff one.vorn packed.db", 2, f"packed.db: {NEITHER}"),
    ("check TARVEX.ini", 2, f"TARVEX.ini: {NEITHER}"),
    ("show settings.db", 2, "settings.db: this is JSON, but no Vorn"),
    ("show settings.json", 2, "settings.json: this is JSON, but no Vorn"),
    ("show settings.vorn", 2, "settings.vorn: line 1: "),
]


class Mistakes(VornTest):
    def setUp(self):
        super().setUp()
        catalog = '\n<?xml version="1.0"?><FunctionCatalog/>'
        for name in ["catalog.xml", "catalog.xml.db"]:
            self.write(name, catalog)
        self.write("wide.vorn", catalog.encode("utf-16"))
        for name in ["settings.vorn", "settings.db", "settings.json"]:
            self.write(name, '{"format": "Born"}')
        self.write("tool.vorn", '{"tool": "Vorn"}')
        self.write("schema.vorn", (SOURCE / "docs" / "vorn.schema.json").read_bytes())
        self.write("comment.kcd", "<!-- made of a <NetworkDefinition> -->\n<report/>")
        for name in ["notes", "notes.csv", "notes.kcd", "notes.vorn"]:
            self.write(name, "Buy milk.\n")
        self.write("packed.db", gzip.compress(ONE.encode()))
        self.write_settings()
        for name in ["empty.vorn", "empty.db"]:
            self.write(name, "")
        other = sqlite3.connect(self.dir / "other.db")
        other.execute("CREATE TABLE t (a)")
        other.commit()
        other.close()
        for name in ["t.csv", "t.kcd"]:
            self.vorn("convert", "one.vorn", name)
        self.write("locked.vorn", ONE).chmod(0o444)
        self.write("kcd.vorn", (self.dir / "t.kcd").read_bytes())

    def files(self):
        return {path.name: path.read_bytes() for path in self.dir.iterdir()}

    def test_each_is_told_in_a_line_and_changes_nothing(self):
        before = self.files()
        for line, status, text in MISTAKES:
            with self.subTest(line):
                result = self.vorn(*line.split())
                errors = result.stderr.decode()
                self.assertEqual(errors[:6 + len(text)], f"vorn: {text}")
                self.assertEqual((errors.count("\n"), result.stdout, result.returncode), (1, b"", status))
        self.assertEqual(self.files(), before)

    def test_what_a_file_has_in_it_counts_and_not_its_extension(self):
        self.vorn("convert", "roadster.vorn", "roadster.db")
        (self.dir / "roadster.db").rename(self.dir / "really-sqlite.vorn")
        (self.dir / "roadster.vorn").rename(self.dir / "really-vorn.db")
        for name in ["really-sqlite.vorn", "really-vorn.db"]:
            with self.subTest(name):
                self.assert_output(self.vorn("convert", name, "copy.vorn"), "")
                self.assertEqual((self.dir / "copy.vorn").read_bytes(), EXAMPLE.read_bytes())

    def test_databases_and_empty_files_are_replaced(self):
        for name in ["two.vorn", "empty.vorn", "empty.db", "t.csv", "t.kcd", "kcd.vorn"]:
            with self.subTest(name):
                self.assert_output(self.vorn("convert", "one.vorn", name), "")

    def test_force_replaces_everything_else(self):
        for name in ["notes", "settings.vorn", "other.db", "catalog.xml.db"]:
            with self.subTest(name):
                self.assert_output(self.vorn("convert", "--force", "one.vorn", name), "")
                self.assert_output(self.vorn("diff", "one.vorn", name), "")
        self.assertNotEqual((self.dir / "notes").read_text(encoding="utf-8"), ONE)  # in its layout
