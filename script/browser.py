"""A browser without a window for report pages: for tests and for pictures. Needs chromium, chromium-driver and
python3-selenium (script/setup test); the model is drawn by the processor.
"""

import json
import sys

try:
    from selenium import webdriver
    from selenium.webdriver.chrome.service import Service
except ImportError:
    sys.exit("report pages need a browser: python3-selenium is missing (script/setup test)")

OPTIONS = ("--headless=new", "--no-sandbox", "--use-angle=swiftshader", "--enable-unsafe-swiftshader", "--hide-scrollbars",
           "--disable-dev-shm-usage", "--disable-extensions", "--no-first-run", "--force-color-profile=srgb", "--no-proxy-server")


def start(width=1280, height=900, dark=False):
    """A browser. Without one there is nothing to test: the reason is said and the program fails."""
    options = webdriver.ChromeOptions()
    options.binary_location = "/usr/bin/chromium"
    for option in OPTIONS + (f"--window-size={width},{height}",) + (("--force-dark-mode",) if dark else ()):
        options.add_argument(option)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    try:
        browser = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
    except Exception as error:
        sys.exit(f"Chromium does not start, report pages cannot be looked at (script/setup test): {error}")
    browser.set_script_timeout(60)
    return browser


def call(browser, name, *values):
    """One of the calls of window.finitesReport; its value, when it is there."""
    answer = browser.execute_async_script("""
        const [name, values, done] = arguments;
        const value = window.finitesReport[name];
        Promise.resolve(typeof value === "function" ? value(...values) : value)
          .then((result) => done(JSON.stringify({ result: result ?? null })), (error) => done(JSON.stringify({ error: String(error) })));
        """, name, values)
    answer = json.loads(answer)
    if "error" in answer:
        raise RuntimeError(f"{name}{values}: {answer['error']}")
    return answer["result"]


def open_page(browser, path):
    """Opens a report and waits until its tables are there; milliseconds until each part was."""
    browser.get_log("browser")
    browser.get(path.resolve().as_uri())
    return call(browser, "ready")


def complaints(browser):
    """What the console has been told of errors and warnings of the page."""
    return [entry["message"] for entry in browser.get_log("browser")
            if entry["level"] in ("SEVERE", "WARNING") and "GPU stall due to ReadPixels" not in entry["message"]]
