"""Takes the pictures of docs/page.md. From the folder of the project:
TARVEX_CATALOG=build/release/tarvex-catalog TARVEX_SOURCE=. /usr/bin/python3 tests/page/screenshots.py"""

import base64
import time

from browser import SOURCE, browser

FOLDER = SOURCE / "docs" / "page"
# Name, address, width, height, medium, scheme.
PICTURES = [
    ("overview", "", 1120, 760, "", "light"),
    ("function", "22.402.C", 1120, 960, "", "light"),
    ("function-dark", "50.307.C", 1120, 1260, "", "dark"),
    ("phone", "22.402.C", 390, 1220, "", "light"),
    ("print", "22.402.C", 720, 1010, "print", "light"),
]


def show(page, address):
    chromium = browser()
    chromium.driver.get("about:blank")
    chromium.driver.get(f"{page.as_uri()}#{address}" if address else page.as_uri())
    while chromium.js("return document.getElementById('view').dataset.shown") != address:
        time.sleep(0.01)


def take(name):
    FOLDER.mkdir(exist_ok=True)
    picture = browser().command("Page.captureScreenshot", format="png")["data"]
    (FOLDER / f"{name}.png").write_bytes(base64.b64decode(picture))


def main():
    chromium = browser()
    page = chromium.example("roadster")
    for name, address, width, height, medium, scheme in PICTURES:
        chromium.resize(width, height)
        chromium.set_media(medium, scheme)
        show(page, address)
        take(name)
    chromium.resize(1120, 620)
    chromium.set_media()
    show(page, "")
    chromium.driver.find_element("id", "search").send_keys("volume")
    while chromium.js("return document.getElementById('results').dataset.query") != "volume":
        time.sleep(0.01)
    chromium.driver.find_element("id", "search").send_keys("\ue015")  # an arrow
    take("search")


if __name__ == "__main__":
    main()
