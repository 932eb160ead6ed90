"""The Python module, as a backend's tests use it: installed, with its fixture, and a client for Apple's service."""

import os
import pathlib
import signal
import subprocess
import sys
import time

import httpx
import pytest
from quorvantis_push import Phone, PhoneError, Refused, WaitFailed
from stand import Key

OFFER = {"aps": {"alert": {"title": "Offers"}, "type": "pushlib-abrirurl", "urlnoti": "https://www.example.com/offers"}}


def send(phone, payload, key=Key()):
    with httpx.Client(http2=True, verify=phone.apns.authority, base_url=f"https://localhost:{phone.apns.port}") as client:
        headers = {"authorization": f"bearer {key.token()}", "apns-topic": phone.apns.topic, "apns-push-type": "alert"}
        return client.post(f"/3/device/{phone.token}", json=payload, headers=headers)


def test_what_a_backend_sends_is_shown_and_opens_its_link_when_tapped(quorvantis_phone):
    quorvantis_phone.register(foreground=True)
    assert send(quorvantis_phone, OFFER).status_code == 200
    shown = quorvantis_phone.wait(screen="banner")
    quorvantis_phone.tap(shown)
    assert quorvantis_phone.wait(event="opened")["url"] == "https://www.example.com/offers"


def test_each_test_has_a_fresh_phone_and_waits_for_its_own_lines(quorvantis_phone):
    assert quorvantis_phone.lines() == []
    quorvantis_phone.register()
    assert quorvantis_phone.wait(do="settle")
    quorvantis_phone.wait(event="callback", selector="onRegisterToken:")  # the last line that there is
    with pytest.raises(WaitFailed, match="Nothing happened"):
        quorvantis_phone.wait(do="settle", seconds=0)
    quorvantis_phone.play({"do": "settle"})
    assert quorvantis_phone.wait(do="settle")


def test_members_inside_others_are_waited_for_too(quorvantis_phone):
    quorvantis_phone.register()
    quorvantis_phone.arrive({"aps": {"alert": {"title": "Hello"}, "badge": 3}})
    quorvantis_phone.arrive(OFFER)
    found = quorvantis_phone.wait(event="callback", argument={"alert": {"title": "Offers"}})
    assert found["argument"]["type"] == "pushlib-abrirurl"


def test_a_wait_that_fails_shows_what_came_instead(quorvantis_phone):
    quorvantis_phone.register()
    quorvantis_phone.wait(do="activate")
    with pytest.raises(WaitFailed) as failure:
        quorvantis_phone.wait(screen="banner", seconds=0)
    text = str(failure.value)
    assert 'callback argument="0001' in text and 'appHash="f00d"' not in text


def test_a_refusal_says_why(quorvantis_phone):
    quorvantis_phone.end()
    with pytest.raises(Refused, match="relaunch") as refusal:
        quorvantis_phone.register()
    assert refusal.value.status == 409
    with pytest.raises(Refused, match="not in the list"):
        quorvantis_phone.tap(7)


def test_a_tool_that_does_not_start_says_why():
    with pytest.raises(PhoneError, match="QUORVANTIS_PUSH"):
        Phone(tool="/nowhere/quorvantis-push")
    with pytest.raises(PhoneError, match="--authority"):
        Phone(server="127.0.0.1:1")


def test_a_phone_that_has_ended_says_so():
    with pytest.raises(PhoneError, match="ended with status"), Phone() as phone:
        phone._tool._process.kill()
        phone._tool._process.wait()
        phone.play({"do": "settle"})


def test_it_ends_with_the_tests_even_when_they_are_killed():
    code = "from quorvantis_push import Phone; p = Phone(apns=True); print(p._tool._process.pid, flush=True); input()"
    with subprocess.Popen([sys.executable, "-c", code], stdin=subprocess.PIPE, stdout=subprocess.PIPE) as runner:
        tool = int(runner.stdout.readline())
        runner.send_signal(signal.SIGKILL)
    until = time.monotonic() + 60
    while pathlib.Path(f"/proc/{tool}").exists():
        assert time.monotonic() < until, "the phone goes on alone"
        time.sleep(0.02)


def test_strict_makes_a_bad_payload_fail():
    with pytest.raises(PhoneError, match="status 1"), Phone(apns=True, strict=True) as phone:
        phone.register()
        assert send(phone, {"aps": {"alert": "plain", "type": "pushlib-normal"}}).status_code == 200


def test_a_failing_test_prints_its_transcript(pytester):
    pytester.makepyfile("def test_it(quorvantis_phone):\n    quorvantis_phone.register()\n    assert False\n")
    output = pytester.runpytest_subprocess("-p", "no:cacheprovider").stdout.str()
    assert "simulated phone" in output and 'host appHash="f00d"' in output


assert os.environ.get("QUORVANTIS_PUSH"), "the tool to test"
