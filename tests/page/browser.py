"""A browser without a window, and the pages of the examples in it. It is started once for all tests of a process."""

import atexit
import json
import os
import shutil
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

from selenium import webdriver
from selenium.webdriver.chrome.options import Options
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

CATALOG = os.environ["TARVEX_CATALOG"]
SOURCE = Path(os.environ["TARVEX_SOURCE"]).resolve()
AXE = SOURCE / "tests" / "page" / "node_modules" / "axe-core" / "axe.min.js"

WIDTH = 1280
HEIGHT = 900
SECONDS = 30  # for whatever a busy machine takes long for

_folder = Path(tempfile.mkdtemp(prefix="tarvex-page-"))
atexit.register(shutil.rmtree, _folder, ignore_errors=True)


def write_page(catalog, name):
    """The page of a catalog, written by the program."""
    page = _folder / name
    subprocess.run([CATALOG, "page", str(catalog), str(page)], check=True, timeout=300, stderr=subprocess.DEVNULL)
    return page


def page_of_text(name, content):
    """The page of a catalog that is given as a text; `name` is that of its file."""
    catalog = _folder / name
    catalog.write_bytes(content.encode())
    return write_page(catalog, "page.html")


class Browser:
    def __init__(self):
        options = Options()
        options.binary_location = shutil.which("chromium")
        # Tests run as root in containers, where the browser can't shut itself in.
        for argument in ["--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                         "--hide-scrollbars", f"--user-data-dir={_folder}/browser"]:
            options.add_argument(argument)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
        self.driver = webdriver.Chrome(service=Service(shutil.which("chromedriver")), options=options)
        atexit.register(self.driver.quit)
        self.pages = {}

    def example(self, name):
        """The page of an example."""
        if name not in self.pages:
            self.pages[name] = write_page(SOURCE / "examples" / f"{name}.xml", f"{name}.html")
        return self.pages[name]

    def command(self, name, **arguments):
        return self.driver.execute_cdp_cmd(name, arguments)

    def resize(self, width=WIDTH, height=HEIGHT, scale=1):
        self.command("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=scale,
                     mobile=False)

    def set_media(self, medium="", scheme="light"):
        self.command("Emulation.setEmulatedMedia", media=medium,
                     features=[{"name": "prefers-color-scheme", "value": scheme}])

    def js(self, script, *arguments):
        return self.driver.execute_script(script, *arguments)


_browser = None


def browser():
    global _browser
    if _browser is None:
        _browser = Browser()
    return _browser


class PageTest(unittest.TestCase):
    """Each test begins with an empty tab of the usual size, and ends without a message and without a request."""

    @classmethod
    def setUpClass(cls):
        cls.browser = browser()

    def setUp(self):
        self.maxDiff = None
        self.driver = self.browser.driver
        self.page_urls = []
        self.driver.get("about:blank")
        self.browser.resize()
        self.browser.set_media()
        self.take_logs()
        self.addCleanup(self.assert_quiet)

    def take_logs(self):
        return self.driver.get_log("browser"), self.driver.get_log("performance")

    def assert_quiet(self):
        messages, events = self.take_logs()
        self.assertEqual([message["message"] for message in messages], [])
        requests = []
        for event in events:
            message = json.loads(event["message"])["message"]
            if message["method"] == "Network.requestWillBeSent":
                requests.append(message["params"]["request"]["url"])
        others = [url for url in requests if not url.startswith(("data:", *self.page_urls))]
        self.assertEqual(others, [])

    def open(self, page, address=""):
        """Opens a page, the name of an example or a path, at an address."""
        path = page if isinstance(page, Path) else self.browser.example(page)
        self.page_urls.append(path.as_uri())
        self.driver.get("about:blank")
        self.driver.get(f"{path.as_uri()}#{address}" if address else path.as_uri())
        self.wait_for(address)

    def go(self, address):
        """Moves within the page, as a link does."""
        self.js("location.hash = arguments[0]", address)
        self.wait_for(address)

    def scroll(self, place):
        """Scrolls there, and lets the page know."""
        self.driver.execute_async_script(
            "window.scrollTo(0, arguments[0]); requestAnimationFrame(() => requestAnimationFrame(arguments[1]))", place)

    def wait_for(self, address):
        self.wait_until("return document.getElementById('view').dataset.shown === arguments[0]", address)

    def wait_until(self, script, *arguments):
        end = time.monotonic() + SECONDS
        while not self.js(script, *arguments):
            self.assertLess(time.monotonic(), end, f"in vain: {script} {arguments}")
            time.sleep(0.01)

    def js(self, script, *arguments):
        return self.browser.js(script, *arguments)

    def find(self, selector):
        return self.driver.find_element(By.CSS_SELECTOR, selector)

    def text(self, selector):
        return self.find(selector).text

    def texts(self, selector):
        return self.js("return [...document.querySelectorAll(arguments[0])].map((e) => e.innerText)", selector)

    def table(self, selector):
        """The cells of a table, row by row."""
        return self.js(
            "return [...document.querySelectorAll(`${arguments[0]} tr`)]"
            ".map((row) => [...row.cells].map((cell) => cell.innerText.trim()))", selector)

    def lines(self, selector):
        """What is read of an element, without empty lines and with a blank between cells."""
        text = self.js("return document.querySelector(arguments[0]).innerText", selector)
        return [" ".join(line.split()) for line in text.split("\n") if line.strip()]

    def heading(self):
        return self.text("h1")

    def press(self, *keys):
        """Presses keys, wherever the focus is."""
        self.driver.switch_to.active_element.send_keys(*keys)

    def search(self, query):
        """Types into the search and waits for what is found."""
        field = self.find("#search")
        field.click()
        field.send_keys(Keys.CONTROL, "a")
        field.send_keys(query)
        self.wait_for_results(query)

    def wait_for_results(self, query):
        self.wait_until("return document.getElementById('results').dataset.query === arguments[0]", query)

    def results(self):
        """What is found: topic, text, and where."""
        rows = []
        for option in self.js("return [...document.querySelectorAll('#results li')].map((e) => "
                               "[...e.children].map((part) => part.textContent))"):
            rows.append(" | ".join(" ".join(part.split()) for part in option))
        return rows
