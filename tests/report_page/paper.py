"""What stands on the pages of a printed report: its words with their places, by Poppler."""

import base64
import re
import subprocess

MARGIN = 15 / 25.4 * 72                    # print.css: 15 mm above and below
LINE = 3.0                                 # points: words of one line differ by less


def print_page(browser, path):
    """Prints as A4 with the margins of the page's own styles."""
    answer = browser.execute_cdp_cmd("Page.printToPDF", {"preferCSSPageSize": True, "printBackground": True})
    path.write_bytes(base64.b64decode(answer["data"]))
    return path


def pages(path):
    """Of each page its height and its words (left, top, right, bottom, text)."""
    text = subprocess.run(["pdftotext", "-bbox", path, "-"], check=True, capture_output=True, text=True).stdout
    result = []
    for page in re.findall(r"<page [^>]*>.*?</page>", text, re.S):
        height = float(re.search(r'height="([\d.]+)"', page).group(1))
        words = [(*map(float, word[:4]), word[4]) for word in
                 re.findall(r'<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="([\d.]+)">(.*?)</word>', page)]
        result.append((height, words))
    return result


def lines(words):
    """Words of each line, from top to bottom and from left to right."""
    result = []
    for word in sorted(words, key=lambda w: (w[1], w[0])):
        if result and abs(result[-1][0][1] - word[1]) < LINE:
            result[-1].append(word)
        else:
            result.append([word])
    return [[word[4] for word in sorted(line)] for line in result]


def beyond_margins(path):
    """Words that reach into the margins above or below: what a page has cut."""
    return [(number + 1, word[4]) for number, (height, words) in enumerate(pages(path)) for word in words
            if word[1] < MARGIN - 1.5 or word[3] > height - MARGIN + 1.5]
