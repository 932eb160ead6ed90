"""Debian's Chromium for tests, and folders from which it can read a page's modules."""

import http.server
import os
import threading
from contextlib import contextmanager
from pathlib import Path

from selenium import webdriver
from selenium.webdriver.chrome.service import Service

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
