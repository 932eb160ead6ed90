export { PhoneError, Refused, WaitFailed } from './lib/errors.js';
export { Phone } from './lib/phone.js';
