"""What can go wrong between a test and a phone."""


class PhoneError(Exception):
    """The tool could not be started or reached, or has ended; the text holds what it said."""


class Refused(PhoneError):
    """The phone has refused a request.

    `status` is the HTTP status: 400 for what can't be read, 409 for what the phone's state does not allow.
    """

    def __init__(self, status: int, reason: str):
        super().__init__(reason)
        self.status = status


class WaitFailed(AssertionError):
    """No such line came in time; the text shows those that came instead."""
