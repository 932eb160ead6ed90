#!/usr/bin/python3
"""page_steps.py TOOL [--brief]: what a step costs on the page of `quorvantis-push phone`, from its POST until what came of
it is drawn, by the page's own measure; what the same step costs in `run`; and the size of the page over the wire."""

import json
import pathlib
import statistics
import subprocess
import sys
import time

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "tests" / "phone"))
from browser import chromium  # noqa: E402
from live_phone import Phone  # noqa: E402
from page_gesture import GESTURE  # noqa: E402
from selenium.webdriver.support.ui import WebDriverWait  # noqa: E402

BRIEF = "--brief" in sys.argv[2:]
GESTURES, IN_RUN, ROUNDS = (4, 20, 1) if BRIEF else (60, 20_000, 5)
INACTIVE = [{"do": "application", "state": "inactive"}, {"do": "settle"}]
FRONT = [{"do": "application", "state": "active"}, {"do": "settle"}]


def on_the_page(tool):
    """Milliseconds of each gesture, of two steps; and the bytes that the page took."""
    with Phone(tool, page=True) as phone, chromium("--window-size=1440,1000") as driver:
        driver.get(phone.facts["address"])
        WebDriverWait(driver, 60, 0.05).until(lambda _: driver.execute_script(
            "return document.getElementById('arrive') && document.getElementById('connection').dataset.state === 'open'"))
        size = driver.execute_script("""
            const entries = ["navigation", "resource"].flatMap((kind) => performance.getEntriesByType(kind));
            return entries.filter(({ name }) => !name.includes("/api/")).reduce((sum, one) => sum + one.transferSize, 0)""")
        durations = [driver.execute_async_script(GESTURE, f"application-{where}")
                     for _ in range(GESTURES // 2) for where in ("inactive", "front")]
    return durations, size


def in_run(tool):
    """Milliseconds of the same two steps."""
    def seconds(pairs):
        scenario = "".join(json.dumps(step) + "\n" for _ in range(pairs // 2) for step in INACTIVE + FRONT)
        start = time.perf_counter()
        subprocess.run([tool, "run", "-"], input=scenario, text=True, stdout=subprocess.DEVNULL, check=True)
        return time.perf_counter() - start
    return min(seconds(IN_RUN) - seconds(0) for _ in range(ROUNDS)) / IN_RUN * 1000


def main():
    durations, size = on_the_page(sys.argv[1])
    print(f"{statistics.median(durations) * 1000:.0f} microseconds: two steps from the page's request until they are drawn")
    print(f"{in_run(sys.argv[1]) * 1000:.0f} microseconds: the same two steps in run")
    print(f"{size} bytes: the page over the wire, with its editor")


main()
