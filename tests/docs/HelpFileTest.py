#!/usr/bin/env python3
"""Tests of what makes the help file. Usage: HelpFileTest.py BUILD_PY HELP_FILE"""

import base64
import html.parser
import pathlib
import subprocess
import sys
import tempfile
import unittest

BUILD_PY = sys.argv.pop(1)
HELP_FILE = pathlib.Path(sys.argv.pop(1))
# One white pixel.
PICTURE = base64.b64decode(
    "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAAAAAA6fptVAAAACklEQVR4nGP4DwABAQEANl9ngAAAAABJRU5ErkJggg=="
)


class Reader(html.parser.HTMLParser):
    """A page's elements; fails where they are not closed in their order."""

    def __init__(self, page):
        super().__init__()
        self.open, self.ids, self.targets, self.sources, self.texts = [], [], [], [], {}
        self.feed(page)
        self.close()
        assert not self.open, f"not closed: {self.open}"

    def handle_starttag(self, tag, attrs):
        attributes = dict(attrs)
        self.ids += [attributes["id"]] if "id" in attributes else []
        self.targets += [attributes["href"]] if "href" in attributes else []
        self.sources += [attributes["src"]] if "src" in attributes else []
        if tag not in ("meta", "img", "br", "hr"):
            self.open.append(tag)

    def handle_endtag(self, tag):
        assert self.open.pop() == tag, f"</{tag}> closes another element"

    def handle_data(self, data):
        if self.open:
            self.texts.setdefault(self.open[-1], []).append(data)


class HelpFileTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        (self.folder / "manual").mkdir()
        (self.folder / "pictures").mkdir()
        (self.folder / "pictures" / "window.png").write_bytes(PICTURE)
        self.output = self.folder / "Burnwick.hlp"
        self.pages = []

    def page(self, text, name="01-start.md"):
        path = self.folder / "manual" / name
        path.write_bytes(text if isinstance(text, bytes) else text.encode("utf-8"))
        self.pages.append(path)

    def build(self):
        return subprocess.run(
            [sys.executable, BUILD_PY, "--output", self.output, *self.pages], capture_output=True, text=True, check=False
        )

    def built(self):
        done = self.build()
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        return Reader(self.output.read_text(encoding="utf-8"))

    def assert_refused(self, *texts):
        done = self.build()
        self.assertEqual(done.returncode, 1, done.stderr)
        self.assertNotIn("Traceback", done.stderr)
        for text in texts:
            self.assertIn(text, done.stderr)
        self.assertFalse(self.output.exists())

    def test_a_page_becomes_a_chapter(self):
        self.page("# Start\n\n## What you *need*\n\nA line & a `cable`.\n")
        page = self.built()
        self.assertEqual(page.ids, ["start", "what-you-need"])
        self.assertEqual(page.texts["title"], ["Burnwick Help"])
        self.assertEqual(page.texts["h1"], ["Burnwick Help"])
        self.assertEqual(page.texts["h2"], ["Start"])
        self.assertIn("A line & a ", page.texts["p"])

    def test_the_contents_lead_to_every_heading_in_order(self):
        self.page("# Second\n\n## B\n\n### C\n", "02-second.md")
        self.page("# First\n\n## A\n", "01-first.md")
        page = self.built()
        self.assertEqual(page.targets, ["#first", "#a", "#second", "#b", "#c"])
        self.assertEqual(page.ids, ["first", "a", "second", "b", "c"])

    def test_pictures_are_in_the_page(self):
        self.page("# Start\n\n![The window](../pictures/window.png)\n")
        source = self.built().sources[0]
        self.assertEqual(source, "data:image/png;base64," + base64.b64encode(PICTURE).decode())

    def test_a_link_may_lead_to_another_page(self):
        self.page("# Start\n\nSee [commands](#commands), <https://example.com> or <me@example.com>.\n")
        self.page("# Commands\n", "02-commands.md")
        self.assertIn("mailto:me@example.com", self.built().targets)

    def test_tables_code_and_lists_are_known(self):
        self.page("# Start\n\n| A | B |\n|---|---|\n| 1 | 2 |\n\n```\na < b\n```\n\n1. one\n    - deep\n2. two\n")
        page = self.built()
        self.assertEqual(page.texts["td"], ["1", "2"])
        self.assertIn("a < b\n", page.texts["code"])
        self.assertIn("deep", page.texts["li"])

    def test_a_broken_link_is_told_with_its_page(self):
        self.page("# Start\n")
        self.page("# Commands\n\nSee [this](#strat).\n", "02-commands.md")
        self.assert_refused("02-commands.md", "#strat", "did you mean #start?")

    def test_a_link_to_a_file_is_refused(self):
        self.page("# Start\n\n[this](02-commands.md)\n")
        self.assert_refused("01-start.md", '"02-commands.md"')

    def test_a_missing_picture_is_told_with_its_page(self):
        self.page("# Start\n\n![The window](../pictures/gone.png)\n")
        self.assert_refused("01-start.md", "../pictures/gone.png", "does not exist")

    def test_a_picture_needs_a_text(self):
        self.page("# Start\n\n![](../pictures/window.png)\n")
        self.assert_refused("01-start.md", "../pictures/window.png", "no text")

    def test_a_heading_that_is_there_twice_is_told_with_both_pages(self):
        self.page("# Start\n\n## Speed\n")
        self.page("# Commands\n\n## Speed\n", "02-commands.md")
        self.assert_refused("02-commands.md", '"Speed"', "#speed", "01-start.md")

    def test_everything_that_is_wrong_is_told_at_once(self):
        self.page("# Start\n\n[a](#x) [b](#y)\n")
        self.assert_refused("#x", "#y")

    def test_a_page_without_a_title_is_refused(self):
        self.page("## Start\n")
        self.assert_refused("01-start.md", "# Title")

    def test_a_second_title_is_refused(self):
        self.page("# Start\n\n# Again\n")
        self.assert_refused("01-start.md", "# Title")

    def test_a_word_that_is_taken_for_an_element_is_refused(self):
        self.page("# Start\n\nDownload <file> now.\n")
        self.assert_refused("01-start.md", "<file>", "`code`")

    def test_an_element_that_is_not_closed_is_refused(self):
        self.page("# Start\n\nPress <kbd>F1.\n")
        self.assert_refused("01-start.md", "kbd")

    def test_lists_that_would_not_be_lists_are_told_with_their_line(self):
        self.page("# Start\n\nText\n- item\n\n1. one\n  - deep\n")
        self.assert_refused("line 4: a list begins after an empty line", "line 7: a list within a list")

    def test_items_of_several_lines_are_fine(self):
        self.page("# Start\n\n- one\n  goes on\n- two\n\n    a paragraph\n- three\nis lazy\n- four\n")
        self.assertEqual(self.built().open, [])

    def test_what_looks_like_a_list_in_code_is_fine(self):
        self.page("# Start\n\n```\ntext\n- no item\n  - none either\n```\n")
        self.built()

    def test_a_page_that_is_no_text_is_refused(self):
        self.page(b"# Start\n\xff\xfe\n")
        self.assert_refused("01-start.md", "UTF-8")

    def test_no_pages_are_refused(self):
        self.assert_refused("no pages")

    def test_the_programs_help_file_is_whole(self):
        page = Reader(HELP_FILE.read_text(encoding="utf-8"))
        self.assertEqual(page.texts["title"], ["Burnwick Help"])
        self.assertEqual(len(page.ids), len(set(page.ids)))
        for target in page.targets:
            self.assertTrue(target.startswith(("http", "mailto:")) or target[1:] in page.ids, target)
        for source in page.sources:
            self.assertTrue(source.startswith("data:image/"), source[:80])


if __name__ == "__main__":
    unittest.main()
