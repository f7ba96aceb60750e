#!/usr/bin/env python3
"""Makes the help file, one HTML page, of the manual's pages.

A page begins with its one "# Title". "## " sections follow, linked to as [text](#id), where the id is the heading in
small letters, with "-" for blanks and without punctuation. Pictures are files beside the manual:
![what it shows](../pictures/name.png). What would come out wrong is told, by page, and nothing is written then.
"""

import argparse
import base64
import difflib
import html
import html.parser
import pathlib
import re
import sys

import markdown
from markdown.extensions.toc import TocExtension, slugify

MEDIA_TYPES = {".png": "image/png", ".jpg": "image/jpeg"}
LINK_SCHEMES = ("http://", "https://", "mailto:")
# What the help window shows; it leaves out anything else.
ELEMENTS = set(
    "a blockquote br code dd del div dl dt em h1 h2 h3 h4 h5 h6 hr img kbd li ol p pre strong sub sup table tbody td th "
    "thead tr ul".split()
)
VOID_ELEMENTS = {"br", "hr", "img"}

STYLE = """
:root { color-scheme: light dark; }
body { font-family: sans-serif; line-height: 1.5; max-width: 46em; margin: 0 auto; padding: 1em; }
h2 { margin-top: 2em; border-bottom: 1px solid rgba(128, 128, 128, 0.5); }
img { max-width: 100%; height: auto; }
code, kbd { font-family: monospace; background-color: rgba(128, 128, 128, 0.15); padding: 0.1em 0.25em; }
pre { background-color: rgba(128, 128, 128, 0.15); padding: 0.75em; overflow-x: auto; }
pre code { background-color: transparent; padding: 0; }
table { border-collapse: collapse; }
th, td { border: 1px solid rgba(128, 128, 128, 0.5); padding: 0.3em 0.6em; text-align: left; vertical-align: top; }
blockquote { margin-left: 0; padding-left: 1em; border-left: 3px solid rgba(128, 128, 128, 0.5); }
"""

DOCUMENT = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<title>{title}</title>
<style>{style}</style>
</head>
<body>
<h1>{title}</h1>
<nav>
{contents}
</nav>
<main>
{pages}
</main>
</body>
</html>
"""


class Manual:
    """What the pages share: the ids of their headings, and all that is wrong."""

    def __init__(self):
        self.page_of_id = {}
        self.troubles = []

    def complain(self, page, trouble):
        self.troubles.append(f"{page.path}: {trouble}")


class Page:
    def __init__(self, path, manual):
        self.path = path
        self.manual = manual
        text = self.read()
        check_source(text, self)
        converter = markdown.Markdown(
            output_format="html",
            extensions=["fenced_code", "sane_lists", "tables", TocExtension(baselevel=2, slugify=self.id_of)],
        )
        converter.treeprocessors.register(Pictures(converter, self), "pictures", 0)
        self.html = converter.convert(text)
        self.headings = converter.toc_tokens

    def read(self):
        try:
            return self.path.read_text(encoding="utf-8-sig")
        except UnicodeDecodeError:
            self.complain("the page is not UTF-8")
            return ""

    def id_of(self, heading, separator):
        """The id of a heading, which no other heading of the manual may have."""
        heading_id = slugify(heading, separator)
        if not heading_id:
            self.complain(f'the heading "{heading}" has no letter to make an id of')
        elif heading_id in self.manual.page_of_id:
            other = self.manual.page_of_id[heading_id].path
            self.complain(f'the heading "{heading}" has the id #{heading_id} that a heading of {other} has already')
        self.manual.page_of_id.setdefault(heading_id, self)
        return heading_id

    def complain(self, trouble):
        self.manual.complain(self, trouble)

    def check(self):
        if [heading["level"] for heading in self.headings] != [2] or not self.html.startswith("<h2"):
            self.complain('a page begins with its title, "# Title", and has no other of that level')
        checker = Checker(self)
        checker.feed(self.html)
        checker.close()


class Pictures(markdown.treeprocessors.Treeprocessor):
    """Puts the pictures themselves in the place of their names."""

    def __init__(self, converter, page):
        super().__init__(converter)
        self.page = page

    def run(self, root):
        for image in root.iter("img"):
            name = image.get("src")
            file = self.page.path.parent / name
            if not image.get("alt"):
                self.page.complain(f"the picture {name} has no text for who cannot see it")
            image.set("src", "data:" + self.data(name, file))

    def data(self, name, file):
        if file.suffix not in MEDIA_TYPES:
            self.page.complain(f"the picture {name} is of no kind that is shown: {', '.join(MEDIA_TYPES)}")
            return ""
        if not file.is_file():
            self.page.complain(f"the picture {name} does not exist")
            return ""
        return f"{MEDIA_TYPES[file.suffix]};base64,{base64.b64encode(file.read_bytes()).decode('ascii')}"


class Checker(html.parser.HTMLParser):
    """Looks at a page's elements, links and pictures, those that were written as HTML too."""

    def __init__(self, page):
        super().__init__()
        self.page = page
        self.open = []

    def handle_starttag(self, tag, attrs):
        attributes = dict(attrs)
        if tag not in ELEMENTS:
            self.page.complain(f"<{tag}> is not shown: write it in `code`")
        if tag == "a":
            self.check_link(attributes.get("href") or "")
        if tag == "img" and not (attributes.get("src") or "").startswith("data:"):
            self.page.complain("a picture is written as ![what it shows](../pictures/name.png)")
        if tag not in VOID_ELEMENTS:
            self.open.append(tag)

    def handle_endtag(self, tag):
        if tag not in self.open:
            self.page.complain(f"</{tag}> closes nothing")
            return
        while (inner := self.open.pop()) != tag:
            self.page.complain(f"<{inner}> is not closed")

    def close(self):
        super().close()
        for tag in self.open:
            self.page.complain(f"<{tag}> is not closed")

    def check_link(self, target):
        ids = self.page.manual.page_of_id
        if target.startswith(LINK_SCHEMES):
            return
        if not target.startswith("#"):
            self.page.complain(f'the link to "{target}" leads nowhere: sections are linked to as #id')
        elif target[1:] not in ids:
            alike = difflib.get_close_matches(target[1:], ids, n=1)
            hint = f"; did you mean #{alike[0]}?" if alike else ""
            self.page.complain(f"the link to {target} leads nowhere{hint}")


def check_source(text, page):
    """Finds what other readers of such pages take for a list or for code, and this one does not."""
    fence = False
    before = ""
    in_list = False
    for number, line in enumerate(text.splitlines(), 1):
        if line.startswith("```"):
            fence = not fence
        elif not fence:
            if re.match(r" +```", line):
                page.complain(f"line {number}: code within a list is not shown: begin ``` at the line's start")
            if re.match(r" {1,3}([-*+]|\d+\.) ", line):
                page.complain(f"line {number}: a list within a list is indented by four blanks")
            if re.match(r"([-*+]|1\.) ", line) and before.strip() and not in_list:
                page.complain(f"line {number}: a list begins after an empty line")
            if re.match(r"([-*+]|\d+\.) ", line):
                in_list = True
            elif line.strip() and not line.startswith(" ") and not before.strip():
                in_list = False
        before = line
    if fence:
        page.complain("``` is not closed")


def contents_of(headings):
    """The headings as nested lists of links."""
    items = []
    for heading in headings:
        link = f'<a href="#{heading["id"]}">{html.escape(html.unescape(heading["name"]))}</a>'
        below = "\n" + contents_of(heading["children"]) if heading["children"] else ""
        items.append(f"<li>{link}{below}</li>")
    return "<ul>\n" + "\n".join(items) + "\n</ul>"


def build(paths, title, manual):
    pages = [Page(path, manual) for path in sorted(paths, key=lambda path: path.name)]
    for page in pages:
        page.check()
    return DOCUMENT.format(
        title=html.escape(title),
        style=STYLE,
        contents=contents_of([heading for page in pages for heading in page.headings]),
        pages="\n".join(page.html for page in pages),
    )


def main():
    parser = argparse.ArgumentParser(description="Makes the help file of the manual's pages.")
    parser.add_argument("--title", default="Burnwick Help", help="the page's title")
    parser.add_argument("--output", type=pathlib.Path, required=True, help="the file to write")
    parser.add_argument("pages", type=pathlib.Path, nargs="*", help="Markdown files, taken in the order of their names")
    arguments = parser.parse_args()
    if not arguments.pages:
        sys.exit("The manual has no pages.")
    manual = Manual()
    document = build(arguments.pages, arguments.title, manual)
    if manual.troubles:
        sys.exit("\n".join(manual.troubles))
    arguments.output.write_text(document, encoding="utf-8")


if __name__ == "__main__":
    main()
