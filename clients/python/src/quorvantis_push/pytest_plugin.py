"""pytest's fixture `quorvantis_phone`: a fresh phone for each test, and what happened on it when a test fails."""

from collections.abc import Iterator
from typing import Any

import pytest

from .errors import PhoneError
from .phone import Phone

_phone_of_test = pytest.StashKey[Phone]()


@pytest.fixture(scope="session")
def quorvantis_phone_options() -> dict[str, Any]:
    """The arguments of the session's `Phone`. To have others, define a fixture of this name in conftest.py."""
    return {"apns": True}


@pytest.fixture(scope="session")
def quorvantis_phone_of_session(quorvantis_phone_options: dict[str, Any]) -> Iterator[Phone]:
    """The process that all tests share, so that a backend is told only once where Apple's service is."""
    with Phone(**quorvantis_phone_options) as phone:
        yield phone


@pytest.fixture
def quorvantis_phone(request: pytest.FixtureRequest, quorvantis_phone_of_session: Phone) -> Phone:
    """A fresh phone, on which the application has not registered yet."""
    quorvantis_phone_of_session.fresh()
    request.node.stash[_phone_of_test] = quorvantis_phone_of_session
    return quorvantis_phone_of_session


@pytest.hookimpl(hookwrapper=True)
def pytest_runtest_makereport(item: pytest.Item) -> Iterator[None]:
    outcome = yield
    report = outcome.get_result()  # type: ignore[attr-defined]
    phone = item.stash.get(_phone_of_test, None)
    if report.when == "call" and report.failed and phone is not None:
        try:
            report.sections.append(("simulated phone", phone.transcript()))
        except PhoneError as error:
            report.sections.append(("simulated phone", str(error)))
