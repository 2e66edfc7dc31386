"""Puts the report page together: page.html with the styles, the joined script and the licence of three.js in their
places. The content security policy names script and styles by their sums, so that nothing else can run.

    join.py page.js LICENSE version page.html

What the solver adds, the data of a run, goes to the place <!-- data -->.
"""

import base64
import hashlib
import html
import pathlib
import sys

HERE = pathlib.Path(__file__).parent


def sum_of(text):
    return "'sha256-" + base64.b64encode(hashlib.sha256(text.encode()).digest()).decode() + "'"


def put(page, place, text):
    """The place must be there once: a page without it would open empty."""
    if page.count(place) != 1:
        sys.exit(f"join.py: page.html has {page.count(place)} places {place}")
    return page.replace(place, text)


def main():
    script_file, licence_file, version, result = sys.argv[1:]
    script = pathlib.Path(script_file).read_text().replace("</script", "<\\/script").replace("<!--", "<\\!--")
    style = (HERE / "page.css").read_text() + (HERE / "print.css").read_text()
    page = (HERE / "page.html").read_text()
    policy = (f"default-src 'none'; script-src {sum_of(script)}; style-src {sum_of(style)}; img-src data: blob:; "
              "base-uri 'none'; form-action 'none'")
    licence = pathlib.Path(licence_file).read_text().strip()
    for place, text in (("<!-- policy -->", f'<meta http-equiv="Content-Security-Policy" content="{policy}">'),
                        ("<!-- style -->", f"<style>{style}</style>"),
                        ("<!-- licence -->", html.escape(f"three.js {version}\n\n{licence}")),
                        ("<!-- script -->", f"<script>{script}</script>")):
        page = put(page, place, text)
    if page.count("<!-- data -->") != 1:
        sys.exit("join.py: the place of the data is not there once")
    pathlib.Path(result).write_text(page)


if __name__ == "__main__":
    main()
