"""Simulated iOS phones for tests of backends that send push notifications.

A `Phone` starts the tool `quorvantis-push`, on which the real client library runs, and ends it with the test:

    with Phone(apns=True) as phone:
        phone.register(foreground=True)
        backend.send(phone.token)
        shown = phone.wait(screen="banner")
        phone.tap(shown)
        assert phone.wait(event="opened")["url"] == "https://www.example.com/offers"
"""

from .errors import PhoneError, Refused, WaitFailed
from .phone import Apns, Line, Phone

__all__ = ["Apns", "Line", "Phone", "PhoneError", "Refused", "WaitFailed"]
