#!/usr/bin/python3
"""page_load.py TOOL [--brief]: the page of `quorvantis-push phone` while a phone lists many notifications, and opened once
it has them: how long until all is shown, how long the page stands still, its elements and its memory."""

import pathlib
import sys
import time

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "tests" / "phone"))
from browser import chromium, renderers  # noqa: E402
from live_phone import Phone  # noqa: E402
from page_gesture import GESTURE  # noqa: E402
from selenium.webdriver.support.ui import WebDriverWait  # noqa: E402

BRIEF = "--brief" in sys.argv[2:]
COUNT, TOGETHER, GESTURES, PATIENCE = 1000 if BRIEF else 100_000, 500, 20, 600
ALLOWED = [{"do": "authorization", "granted": True}, {"do": "host", "appHash": "f00d"}, {"do": "activate", "value": True},
           {"do": "settle"}, {"do": "application", "state": "background"}, {"do": "settle"}]
# The longest time in which the browser could not do anything else for the page; and when its end was first seen.
WATCH = """
globalThis.stall = 0; globalThis.endShown = null;
new PerformanceObserver((list) => { for (const { duration } of list.getEntries()) stall = Math.max(stall, duration); })
  .observe({ entryTypes: ["longtask"] });
const look = () => {
  if (endShown === null && document.querySelector(".row")) endShown = performance.now();
  if (endShown === null) requestAnimationFrame(look);
};
look();
"""
IS_COMPLETE = "return document.getElementById('moment-text')?.textContent === `Now, after ${arguments[0]} lines`"


def notification(number):
    return {"aps": {"alert": {"title": f"Offer {number}", "body": "Three new ones are waiting for you"}, "badge": number % 9,
                    "type": "pushlib-normal"}}


def is_complete(driver, phone):
    lines = phone.json("GET", "/api/status")[1]["next"] - 1
    WebDriverWait(driver, PATIENCE, 0.02).until(lambda _: driver.execute_script(IS_COMPLETE, lines))
    return lines


def stall(driver):
    """The longest one so far, and counts from here on."""
    return driver.execute_script("const longest = stall; stall = 0; return longest")


def main():
    figures = []
    with Phone(sys.argv[1], page=True) as phone, chromium("--window-size=1440,1000") as driver:
        phone.play(*ALLOWED)
        driver.execute_cdp_cmd("Page.addScriptToEvaluateOnNewDocument", {"source": WATCH})
        driver.get(phone.facts["address"])
        is_complete(driver, phone)
        stall(driver)

        began = time.perf_counter()
        for first in range(0, COUNT, TOGETHER):
            phone.play(*({"phone": "arrive", "userInfo": notification(first + i)} for i in range(TOGETHER)))
        sent = time.perf_counter()
        is_complete(driver, phone)
        figures.append((1000 * (time.perf_counter() - sent), "milliseconds: from the last one until the page shows it"))
        figures.append((1000 * (sent - began), "milliseconds: the phone gets them, while the page shows them"))
        figures.append((stall(driver), "milliseconds: the page's longest stall meanwhile"))

        began = time.perf_counter()
        driver.refresh()
        lines = is_complete(driver, phone)
        figures.append((1000 * (time.perf_counter() - began), f"milliseconds: the page opens and shows all {lines} lines"))
        figures.append((driver.execute_script("return endShown"), "milliseconds: until it shows the last of them"))
        figures.append((stall(driver), "milliseconds: its longest stall meanwhile"))

        gestures = [driver.execute_async_script(GESTURE, f"application-{where}")
                    for _ in range(GESTURES // 2) for where in ("front", "background")]
        figures.append((max(gestures), "milliseconds: the slowest of 20 further steps until it is drawn"))
        driver.execute_script("document.querySelector('#phone .screen').scrollTop = 1e6")
        figures.append((driver.execute_script("return document.querySelectorAll('*').length"), "elements of the page"))
        figures.append((sum(renderers(driver)) / 2**20, "MiB: the memory of all its renderers"))
    for value, name in figures:
        print(f"{value:.0f} {name}")


main()
