#!/usr/bin/python3
"""page_test.py TOOL [webkit]: the page in Chromium, or in WebKit, used with mouse and keys as a person would; what is
waited for is what is seen."""

import json
import os
import socket
import sys
import tempfile
from pathlib import Path

from browser import PATIENCE, chromium, webkit
from live_phone import Phone, check, run, texts
from selenium.common.exceptions import (ElementNotInteractableException, NoSuchElementException,
                                        StaleElementReferenceException)
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.ui import Select, WebDriverWait

TOOL, IN_WEBKIT = sys.argv[1], sys.argv[2:] == ["webkit"]
HTTPS = "https://www.example.com/"
HOSTILE = '<img src=x onerror="window.ran=1"><script>window.ran=1</script></script>\'"&'


def alert(title, **aps):
    return {"aps": {"alert": {"title": title, "body": "Body of " + title}} | aps}


TYPES = {"normal": {"type": "pushlib-normal", "badge": 3}, "application": {"type": "pushlib-abrirapp"},
         "link": {"type": "pushlib-abrirurl", "urlnoti": HTTPS}, "extras": {"type": "pushlib-extras", "extra1": "one"},
         "none": {}}


class Page:
    def __init__(self, driver, address):
        self.driver, self.address = driver, address
        driver.get(address)
        self.until("connected", lambda: self.one("#connection").get_attribute("data-state") == "open")
        self.until("its controls", lambda: self.all("#arrive"))

    def until(self, what, holds):
        """What `holds` gives, once that is something."""
        passing = ElementNotInteractableException, NoSuchElementException, StaleElementReferenceException
        wait = WebDriverWait(self.driver, PATIENCE, 0.02, passing)
        return wait.until(lambda _: holds(), f"{what} was not seen")

    def one(self, selector):
        return self.driver.find_element(By.CSS_SELECTOR, selector)

    def all(self, selector):
        return self.driver.find_elements(By.CSS_SELECTOR, selector)

    def text(self, selector):
        return self.driver.execute_script("return [...document.querySelectorAll(arguments[0])].map(e => e.textContent)", selector)

    def sees(self, selector, text):
        self.until(f"“{text}” in {selector}", lambda: any(text in found for found in self.text(selector)))

    def click(self, selector, text=""):
        """Clicks what is there, enabled and says the text."""
        def pressed():
            for found in self.all(selector):
                said = found.get_property("textContent") + (found.get_attribute("aria-label") or "")
                if text in said and found.is_enabled():
                    self.driver.execute_script("arguments[0].scrollIntoView({block: 'center'})", found)
                    found.click()
                    return True
            return False
        self.until(f"{selector} {text}", pressed)

    def tab(self, name):
        self.click("#tab-panel-" + name)

    def write(self, text):
        self.tab("notification")
        self.driver.execute_script("document.querySelector('#editor .CodeMirror').CodeMirror.setValue(arguments[0])", text)

    def arrives(self, payload):
        self.write(json.dumps(payload, indent=1))
        self.click("#arrive")

    def lines(self):
        return self.until("the moment", lambda: self.text("#moment-text"))[0]

    def shown(self):
        """What one sees of the phone and of what happened: the same for the same lines."""
        self.until("the timeline", lambda: self.all(".scroller"))  # a page that is loaded again has none at first
        self.driver.execute_script("document.querySelector('.scroller').scrollTop = 1e9")
        rows = "return document.querySelector('.row')?.getAttribute('aria-setsize')"
        last = f'[aria-posinset="{self.until("a row", lambda: self.driver.execute_script(rows))}"]'
        self.until("the last row", lambda: self.all(last))
        return {part: self.text(part) for part in ("#phone .screen", "#phone .alerts", "#phone .card", "#phone .clock",
                                                   "#stored", "#moment-text", ".row" + last)}

    def phone(self):
        return self.one("#phone .phone").get_attribute("data-screen")

    def is_drawn(self, phone):
        """Waits until all that happened is drawn."""
        self.until("all lines", lambda: f"after {phone.json('GET', '/api/status')[1]['next'] - 1} lines" in self.lines())


def registers(page, phone):
    page.click("#register")
    page.sees("#prompt", "would like to send you notifications")
    page.click("#prompt button", "Allow")
    page.sees("#phone .reports", "The push server knows this phone")
    page.sees("#stored .settings", "pushAppHash")
    page.tab("host")
    label = page.driver.find_element(By.XPATH, "//label[contains(., 'Show notifications in the foreground')]")
    page.click("#" + label.get_attribute("for"))
    page.click("#panel-host form button", "Configure")
    page.until("the switch", lambda: [line for line in phone.lines() if line.get("foreground") is True])


def each_type(page, phone):
    for kind, aps in TYPES.items():
        page.arrives(alert(f"front {kind}", **aps))
        page.sees("#phone .banner, #phone .reports, #phone .alerts", f"front {kind}")
        if kind == "link":
            page.click("#phone .alerts [role=alertdialog]:last-child button", "OK")
        page.click("#application-background")
        page.until("the home screen", lambda: page.phone() != "application")
        page.arrives(alert(f"behind {kind}", **aps))
        page.sees("#phone .notifications", f"behind {kind}")
        page.click("#phone .notification-body", f"behind {kind}")
        page.sees("#application-state", "active")
        number = [line for line in phone.lines() if line.get("screen") == "listed"][-1]["notification"]
        page.until("it is no longer in the list", lambda n=number: {"screen": "unlisted", "notification": n} in phone.lines())
        if kind == "link":
            page.sees("#phone .card", HTTPS)
            check("noopener" in page.one("#phone .card a").get_attribute("rel"), "a link opens nothing here")


def alerts(page, _):
    for number in (1, 2):
        page.arrives(alert(f"link {number}", **TYPES["link"]))
        page.sees("#phone .alerts", f"link {number}")
    check(len(page.all("#phone .alerts [role=alertdialog]")) == 2, "one on the other")
    page.click("#application-background")
    page.until("the application's windows are gone", lambda: not page.all("#phone .alerts [role=alertdialog]"))
    page.click("#application-front")
    page.until("they are back", lambda: len(page.all("#phone .alerts [role=alertdialog]")) == 2)
    page.click("#phone .alerts [role=alertdialog]:last-child button", "OK")
    page.until("one is left", lambda: len(page.all("#phone .alerts [role=alertdialog]")) == 1)
    page.sees("#phone .card", HTTPS)


def server_and_token(page, _):
    for answer, seen in (("It refuses, with a reason", ("#stored .server", "not known here")),
                         ("No connection", (".row", "nothing listens"))):
        page.tab("server")
        Select(page.one("#answer")).select_by_visible_text(answer)
        page.click("#queue-answer")
        page.sees("#answers", "Queued")
        page.tab("device")
        page.click("#new-token")
        page.tab("server")
        page.sees("#answers", "None is queued")
        page.sees(*seen)
    page.click("#order-fault")
    page.sees("#faults", "Ordered: Too many requests (429), once.")
    page.click("#no-fault")
    page.sees("#faults", "Back to normal.")
    page.tab("device")
    page.click("#airplane")
    page.until("airplane mode", lambda: page.one("#airplane").get_attribute("aria-pressed") == "true")
    page.arrives(alert("kept", **TYPES["normal"]))
    page.sees("#hint", "Airplane mode")
    page.tab("device")
    page.click("#airplane")
    page.sees("#phone .reports", "kept")


def ends_and_begins(page, _):
    page.click("#application-relaunch")
    page.until("no alert: they go with the process", lambda: not page.all("#phone .alerts [role=alertdialog]"))
    page.write('{"aps":{"alert":"no dictionary","type":"pushlib-normal"}}')
    page.sees("#findings", "alert")
    page.until("it is marked", lambda: page.all(".CodeMirror-lint-marker-error"))
    page.click("#arrive")
    page.sees("#phone .notice", "objectForKey:")
    page.sees("#application-state", "not running")
    page.click("#application-relaunch")
    page.sees("#application-state", "active")
    page.click("#findings button", "Fix it")
    page.until("nothing to mend", lambda: "no dictionary" in page.driver.execute_script(
        "return document.querySelector('#editor .CodeMirror').CodeMirror.getValue()") and not page.all(".finding.error"))
    page.click("#arrive")
    page.sees("#phone .reports", "no dictionary")
    page.click("#application-end")
    page.sees("#application-state", "not running")


def any_moment(page, phone):
    page.is_drawn(phone)
    now = page.shown()
    slider = page.one("#slider")
    slider.send_keys(Keys.HOME)
    page.sees("#moment-text", "nothing has happened")
    check(not page.all("#phone .reports li") and "pushAppHash" not in "".join(page.text("#stored")), "as it was then")
    check(not [b for b in page.all("#application button") if b.is_enabled()], "the past can't be acted on")
    for _ in range(3):
        slider.send_keys(Keys.ARROW_RIGHT)
    page.sees("#moment-text", "After line 3 of")
    page.click("#moment-now")
    page.until("the same", lambda: page.shown() == now)
    page.click(".filters .chip", "Library")
    page.until("without", lambda: not [who for who in page.text(".row .actor:first-of-type") if who == "Library"])
    page.click(".filters .chip", "Library")


def tabs_and_reload(page, phone):
    page.is_drawn(phone)
    shown = page.shown()
    first = page.driver.current_window_handle
    check(phone.key not in page.driver.current_url, "the key is not left in sight")
    page.driver.refresh()
    page.until("the same phone", lambda: page.shown() == shown)
    page.driver.switch_to.new_window("window" if IN_WEBKIT else "tab")
    other = Page(page.driver, phone.facts["address"])
    other.until("the same phone", lambda: other.shown() == shown)
    phone.play({"do": "device", "country": "FR"})
    for window in (page.driver.current_window_handle, first):
        page.driver.switch_to.window(window)
        page.is_drawn(phone)


def kept(page, button, file):
    """The text of the file that a button saves."""
    if IN_WEBKIT:  # whose driver saves none: what the browser would have got
        page.driver.execute_script("""
            globalThis.kept = null;
            URL.createObjectURL = (blob) => { blob.text().then((text) => (kept = text)); return "#"; };
            HTMLAnchorElement.prototype.click = () => {};""")
        page.click(button)
        file.write_text(page.until(file.name, lambda: page.driver.execute_script("return kept")))
    else:
        file.unlink(missing_ok=True)
        page.click(button)
        page.until(file.name, file.exists)
    return file.read_text()


def saved(page, phone, folder):
    page.is_drawn(phone)
    shown = page.shown()
    files = {}
    for button, name in (("#save-scenario", "phone.jsonl"), ("#save-page", "phone.html")):
        files[name] = kept(page, button, folder / name)
    check(run(TOOL, files["phone.jsonl"]) == texts(phone.lines()), "what was clicked together gives the same events")
    check(phone.key not in files["phone.html"] + files["phone.jsonl"], "the key is in no file")
    page.driver.switch_to.new_window("window" if IN_WEBKIT else "tab")
    page.driver.get((folder / "phone.html").as_uri())
    page.until("the saved phone", lambda: page.all(".row"))
    version = phone.json("GET", "/api/status")[1]["version"]
    check(page.one("meta[name=generator]").get_attribute("content") == f"quorvantis-push {version}", "what saved it")
    page.until("the same last state and timeline", lambda: page.shown() == shown)
    check(all(entry.startswith("file:") for entry in page.driver.execute_script(
        "return performance.getEntriesByType('resource').map(e => e.name)")), "without any server")
    page.driver.close()
    page.driver.switch_to.window(page.driver.window_handles[0])
    page.click("#fresh")
    page.click(".question button", "Cancel")
    page.until("nothing is asked", lambda: not page.all(".question"))
    check(page.shown() == shown, "the phone is as it was")
    page.click("#fresh")
    page.click(".question button", "Begin anew")
    page.sees("#timeline", "Nothing has happened yet")
    page.one("input[type=file][aria-label='Open scenario …']").send_keys(str(folder / "phone.jsonl"))
    page.until("the session, opened again", lambda: texts(phone.lines()) == run(TOOL, files["phone.jsonl"]))
    page.is_drawn(phone)


def files_are_judged_as_they_are(page, _, folder):
    marked = folder / "marked.apns"
    marked.write_text('\ufeff{"aps":{"alert":{"body":"x"}}}', "utf-8")
    page.tab("notification")
    page.one("input[type=file][aria-label='Open .apns …']").send_keys(str(marked))
    page.sees("#findings", "byte order mark")
    page.click("#findings button", "Fix it")
    page.until("the mark is gone", lambda: not page.all(".finding.error"))


def texts_stay_texts(page, phone, folder):
    """Whatever a payload, a key, the device or the server says: it is text, and nothing of it runs."""
    hostile = {"alert": {"title": HOSTILE, "body": HOSTILE, HOSTILE: HOSTILE}, "extra1": HOSTILE, HOSTILE: [HOSTILE]}
    phone.fresh()
    phone.play({"do": "device", "name": HOSTILE, "country": HOSTILE, "languages": [HOSTILE]},
               {"do": "application", "version": HOSTILE}, {"do": "authorization", "granted": True},
               {"do": "host", "appHash": HOSTILE, "foreground": True}, {"do": "store", "set": {HOSTILE: HOSTILE}},
               {"do": "server", "answers": [{"status": 200, "body": json.dumps({"error": "si", "errorDescripcion": HOSTILE})}]},
               {"do": "activate", "value": True}, {"do": "settle"})
    for aps in (hostile, hostile | TYPES["link"], hostile | TYPES["link"] | {"urlnoti": "javascript:window.ran=1"},
                hostile | TYPES["extras"], {"alert": {"title": HOSTILE}, "type": HOSTILE}):
        page.arrives({"aps": aps, HOSTILE: HOSTILE})
        page.is_drawn(phone)
    page.click("#application-background")
    page.arrives({"aps": hostile})
    page.sees("#phone .notifications", HOSTILE)
    page.click(".row button")
    for _ in range(2):
        phone.play({"do": "application", "state": "active"}, {"do": "advance", "seconds": 1})
        page.is_drawn(phone)
    inline = "document.body.append(Object.assign(document.createElement('script'), {text: 'window.ran=1'})); return window.ran"
    check(page.driver.execute_script(inline) is None, "the page takes no script but its own")
    check(not page.all("a[href^='javascript']") and not page.all("#page img[src=x]"), "it stays text")
    kept(page, "#save-page", folder / "phone.html")
    page.driver.get((folder / "phone.html").as_uri())
    page.until("the saved phone", lambda: page.all(".row"))
    check(page.driver.execute_script("return window.ran") is None, "a script ran")
    page.driver.get(page.address)
    page.is_drawn(phone)
    check(page.driver.execute_script("return window.ran") is None, "a script ran")


def in_sight(page, selector):
    """Whether one sees all of it without scrolling."""
    return page.driver.execute_script("""
        const found = [...document.querySelectorAll(arguments[0])].at(-1);
        if (!found) return false;
        const { left, right, top, bottom } = found.getBoundingClientRect();
        const clips = (name) => getComputedStyle(name).overflowY !== "visible";
        for (let outer = found.parentElement; outer; outer = outer.parentElement) {
          const box = outer.getBoundingClientRect();
          if (clips(outer) && (top < box.top - 1 || bottom > box.bottom + 1)) return false;
        }
        return right > left && left >= 0 && top >= 0 && right <= innerWidth && bottom <= innerHeight;""", selector)


def resize(page, width, height):
    """The window, so that the page has this size."""
    outer = page.driver.get_window_size()
    inner = page.driver.execute_script("return [innerWidth, innerHeight]")
    page.driver.set_window_size(outer["width"] - inner[0] + width, outer["height"] - inner[1] + height)
    page.until("the size", lambda: page.driver.execute_script("return [innerWidth, innerHeight]") == [width, height])


def all_at_once(page, phone):
    """What one does and what it does are seen together; in a narrow window a tap apart."""
    phone.fresh()
    for width, height in ((1440, 900), (1024, 768)):
        resize(page, width, height)
        for _ in range(3):
            page.arrives(alert("seen", **TYPES["normal"]))
        page.is_drawn(phone)
        for selector in ("#phone .phone", "#application button", "#arrive", "#moment-text"):
            check(in_sight(page, selector), f"{selector} at {width} by {height}")
        page.until("the newest line", lambda: page.text(".row .number")[-1] == str(len(phone.lines())) and in_sight(page, ".row"))
    resize(page, 500, 844)
    parts = {"device": "#phone .phone", "controls": "#arrive", "past": ".row"}
    for place in ("past", "device", "controls"):
        page.click(f"#places [data-place={place}]")
        for other, selector in parts.items():
            page.until(f"{selector} at {place}", lambda o=other, s=selector, p=place: in_sight(page, s) == (o == p))
    page.click("#arrive")
    page.until("the phone", lambda: in_sight(page, parts["device"]))
    page.sees("#places .news", " new")
    page.click("#places [data-place=past]")
    page.until("it was seen", lambda: page.text("#places .news") == [""] and in_sight(page, ".row"))
    resize(page, 1440, 900)


def moment_in_sight(page, phone):
    """The row of the moment that one looks at stays in sight, whatever size the window gets; and so does the last."""
    page.is_drawn(phone)
    slider = page.one("#slider")
    slider.send_keys(Keys.HOME, Keys.ARROW_RIGHT, Keys.ARROW_RIGHT)
    for width in (700, 1440):
        resize(page, width, 900)
        page.driver.execute_script("document.querySelector('#places [data-place=past]').click()")
        page.until("the row of the moment", lambda: in_sight(page, ".row.moment"))
    page.click("#moment-now")
    count = len(phone.lines())
    page.until("the last row", lambda: page.text(".row .number")[-1] == str(count) and in_sight(page, ".row"))


def without_eyes_or_mouse(page, phone):
    """What happens is said, and all that a mouse reaches the keyboard does."""
    phone.fresh()
    phone.play({"do": "device", "country": "FR"}, {"do": "show"})
    page.driver.refresh()
    page.is_drawn(phone)
    check(page.text("#said p") == [], "what was there before is not said")
    check(page.one("#said").get_attribute("aria-live") == "polite", "politely")
    phone.play({"do": "application", "state": "inactive"}, {"phone": "airplaneMode", "on": True})
    page.sees("#said", "User to System: makes the application inactive")
    page.sees("#said", "User to System: airplane mode on")
    missed = page.driver.execute_script("""
        const isReached = (one) => one.tabIndex >= 0 || one.closest("[role=tablist], .rows, [inert], .CodeMirror");
        return [...document.querySelectorAll("button:enabled, input:enabled, select, a[href]")]
          .filter((one) => one.offsetParent && !isReached(one)).map((one) => one.outerHTML)""")
    check(missed == [], missed)
    row = page.one(".row button[tabindex='0']")
    page.driver.execute_script("arguments[0].focus()", row)
    row.send_keys(Keys.HOME)
    first = page.driver.switch_to.active_element
    first.send_keys(Keys.ENTER)
    page.sees(".details", "The line")
    page.driver.switch_to.active_element.send_keys(Keys.ARROW_DOWN)
    check(page.driver.switch_to.active_element.get_property("textContent").startswith("2"), "the next row")


def address_copied(page, phone):
    page.driver.execute_script("navigator.clipboard.writeText = async (text) => (globalThis.copied = text)")
    page.click("#copy-address")
    page.sees("#message", "The address is copied")
    check(page.driver.execute_script("return globalThis.copied") == phone.facts["address"], "the address that lets in")
    page.click("#message button")


def many(page, phone):
    """However much there is, what is in sight is drawn, and the first and the last of it can be reached."""
    phone.fresh()
    phone.play({"do": "authorization", "granted": True}, {"do": "application", "state": "background"})
    for first in range(1, 2001, 500):
        phone.play(*({"phone": "arrive", "userInfo": alert(f"number {first + i}.")} for i in range(500)))
    page.driver.refresh()
    page.is_drawn(phone)
    page.sees("#phone .notifications", "number 2000.")
    count = page.driver.execute_script("return document.querySelectorAll('*').length")
    check(count < 2500, f"{count} elements")
    page.driver.execute_script("document.querySelector('#phone .screen').scrollTop = 1e9")
    page.sees("#phone .notifications", "number 1.")
    page.sees(".row .what", "number 2000.")
    page.driver.execute_script("document.querySelector('.scroller').scrollTop = 0")
    page.until("the first row", lambda: page.all('.row[aria-posinset="1"]'))
    page.click(".notification-body", "number 1.")
    page.sees("#application-state", "active")


def comes_back(page, port):
    page.until("gone", lambda: page.one("#connection").get_attribute("data-state") == "lost")
    page.sees("#connection", "stopped")
    with Phone(TOOL, "--port", port, page=True) as phone:
        page.until("back", lambda: page.one("#connection").get_attribute("data-state") == "open")
        phone.play({"do": "show"})
        page.is_drawn(phone)
        page.driver.execute_script("sessionStorage.clear()")
        page.driver.get(f"http://127.0.0.1:{port}/#wrong")
        page.until("refused", lambda: page.one("#connection").get_attribute("data-state") == "refused")


def free_port():
    with socket.socket() as free:
        free.bind(("127.0.0.1", 0))
        return str(free.getsockname()[1])


def main():
    with tempfile.TemporaryDirectory() as name, webkit() if IN_WEBKIT else chromium() as driver:
        folder, port = Path(name), free_port()
        os.environ["XDG_STATE_HOME"] = name
        driver.set_window_size(1440, 1000)
        if not IN_WEBKIT:
            driver.execute_cdp_cmd("Browser.setDownloadBehavior", {"behavior": "allow", "downloadPath": name})
        with Phone(TOOL, "--port", port, "--apns=0", page=True) as phone:
            page = Page(driver, phone.facts["address"])
            for part in (registers, each_type, alerts, server_and_token, ends_and_begins, any_moment, tabs_and_reload):
                part(page, phone)
            driver.switch_to.window(driver.window_handles[0])
            saved(page, phone, folder)
            files_are_judged_as_they_are(page, phone, folder)
            texts_stay_texts(page, phone, folder)
            if not IN_WEBKIT:  # under whose driver clicks miss after the window has changed its size
                all_at_once(page, phone)
                moment_in_sight(page, phone)
            for part in (without_eyes_or_mouse, address_copied, many):
                part(page, phone)
            own = f"http://127.0.0.1:{port}/"
            asked = driver.execute_script("return performance.getEntriesByType('resource').map(e => e.name)")
            check(asked and all(address.startswith(own) for address in asked), asked)
        comes_back(page, port)


main()
