// What can go wrong between a test and a phone.

import { AssertionError } from 'node:assert';

/** The tool could not be started or reached, or has ended; the message holds what it said. */
export class PhoneError extends Error {
  name = 'PhoneError';
}

/** The phone has refused a request; `status` is the HTTP status. */
export class Refused extends PhoneError {
  name = 'Refused';

  constructor(status, reason) {
    super(reason);
    this.status = status;
  }
}

/** No such line came in time; the message shows those that came instead. */
export class WaitFailed extends AssertionError {
  name = 'WaitFailed';

  constructor(message) {
    super({ message });
  }
}
