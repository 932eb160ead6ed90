"""Debian's Chromium for tests, and folders from which it can read a page's modules."""

import http.server
import os
import re
import socket
import subprocess
import threading
import time
from contextlib import contextmanager, suppress
from pathlib import Path

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.remote.file_detector import UselessFileDetector

PATIENCE = 60


@contextmanager
def chromium(*arguments):
    options = webdriver.ChromeOptions()
    options.binary_location = "/usr/bin/chromium"
    as_root = ["--no-sandbox"] if os.geteuid() == 0 else []
    for argument in ("--headless=new", "--disable-dev-shm-usage", *as_root, *arguments):
        options.add_argument(argument)
    driver = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
    try:
        driver.set_script_timeout(PATIENCE)
        yield driver
    finally:
        driver.quit()


@contextmanager
def ended(*command, **more):
    """A process, which ends with the `with`."""
    process = subprocess.Popen(command, **more)
    try:
        yield process
    finally:
        process.terminate()
        process.wait(PATIENCE)


@contextmanager
def webkit():
    """Debian's WebKit, which has no mode without a screen: its screen is Xvfb's."""
    options = webdriver.WebKitGTKOptions()
    options.binary_location = str(next(Path("/usr/lib").glob("*/webkit2gtk-4.*/MiniBrowser")))
    options.add_argument("--automation")
    with socket.socket() as free:
        free.bind(("127.0.0.1", 0))
        port = free.getsockname()[1]
    with ended("Xvfb", "-displayfd", "1", "-screen", "0", "1600x1200x24", "-nolisten", "tcp", stdout=subprocess.PIPE,
               stderr=subprocess.DEVNULL, text=True) as screen, screen.stdout:
        environment = os.environ | {"DISPLAY": ":" + screen.stdout.readline().strip(), "GDK_BACKEND": "x11",
                                    "LIBGL_ALWAYS_SOFTWARE": "1"}
        with ended("WebKitWebDriver", f"--port={port}", env=environment, stderr=subprocess.DEVNULL):
            for _ in range(10 * PATIENCE):
                with suppress(OSError), socket.create_connection(("127.0.0.1", port)):
                    break
                time.sleep(0.1)
            driver = webdriver.Remote(f"http://127.0.0.1:{port}", options=options)
            try:
                driver.file_detector = UselessFileDetector()  # files are where the browser is
                driver.set_script_timeout(PATIENCE)
                yield driver
            finally:
                driver.quit()


def renderers(driver):
    """The bytes of memory of each of the browser's renderers; what they share counts for each in part."""
    found, own = [], {driver.service.process.pid}
    for folder in sorted((f for f in Path("/proc").iterdir() if f.name.isdigit()), key=lambda f: int(f.name)):
        try:
            fields = dict(line.split(":", 1) for line in (folder / "status").read_text().splitlines() if ":" in line)
            command = (folder / "cmdline").read_text()
        except OSError:  # it has ended
            continue
        if int(fields["PPid"]) in own:
            own.add(int(fields["Pid"]))
            if "--type=renderer" in command:
                share = re.search(r"^Pss: +(\d+)", (folder / "smaps_rollup").read_text(), re.MULTILINE)
                found.append(int(share[1]) * 1024)
    return found


@contextmanager
def served(*folders):
    """The address at which the files of the folders are."""

    class Handler(http.server.SimpleHTTPRequestHandler):
        def translate_path(self, path):
            return next((str(file) for folder in folders if (file := Path(folder, path.lstrip("/"))).is_file()), "")

        def log_message(self, *_):
            pass

    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    try:
        yield f"http://127.0.0.1:{server.server_port}/"
    finally:
        server.shutdown()
        server.server_close()
