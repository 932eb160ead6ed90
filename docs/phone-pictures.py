#!/usr/bin/python3
"""Takes the pictures of docs/phone.md: docs/phone-pictures.py TOOL"""
import sys
from pathlib import Path

DOCS = Path(__file__).resolve().parent
sys.path.append(str(DOCS.parent / "tests" / "phone"))
from browser import chromium  # noqa: E402
from live_phone import Phone  # noqa: E402

SALE = {"aps": {"alert": {"title": "Sale today", "body": "Everything at half price"}, "badge": 2, "type": "pushlib-abrirurl",
                "urlnoti": "https://www.example.com/sale"}}
ORDER = {"aps": {"alert": {"title": "Your order", "body": "It is on its way"}, "badge": 1, "type": "pushlib-normal"}}
SESSION = [{"do": "authorization", "granted": True}, {"do": "host", "appHash": "f00d", "foreground": True},
           {"do": "activate", "value": True}, {"do": "settle"}, {"phone": "arrive", "userInfo": ORDER},
           {"do": "advance", "seconds": 5}, {"phone": "arrive", "userInfo": SALE}]


def picture(driver, name, scheme, width, height):
    driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {"features": [{"name": "prefers-color-scheme", "value": scheme}]})
    driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                           {"width": width, "height": height, "deviceScaleFactor": 1, "mobile": False})
    driver.execute_async_script("requestAnimationFrame(() => setTimeout(arguments[0], 1000))")  # animations end
    driver.save_screenshot(str(DOCS / name))


def main():
    with Phone(sys.argv[1], page=True) as phone, chromium("--hide-scrollbars") as driver:
        phone.play(*SESSION)
        driver.get(phone.facts["address"])
        picture(driver, "phone.png", "light", 1440, 900)
        driver.execute_script("const s = document.getElementById('slider'); s.value = 30;"
                              "s.dispatchEvent(new Event('input'));")
        picture(driver, "phone-past.png", "dark", 1024, 768)
        driver.execute_script("document.getElementById('moment-now').click();"
                              "document.querySelector('#places [data-place=past]').click()")
        picture(driver, "phone-narrow.png", "light", 390, 844)


main()
