// One simulated phone, and what a test does with it. `index.d.ts` says what each operation takes and gives.

import { mkdtempSync, readFileSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { PhoneError, Refused, WaitFailed } from './errors.js';
import { Interface } from './interface.js';
import { Tool } from './tool.js';
import { readable } from './transcript.js';

const SHOWN_LINES = 60; // the last ones, when a wait fails

// The names of options that are handed on as they are, and the command's own.
const HANDED_ON = {
  topic: '--topic', providerKey: '--provider-key', clientAuthority: '--client-authority', server: '--server',
  authority: '--authority', settings: '--settings', build: '--build',
};

export class Phone {
  #folder;
  #tool;
  #interface;
  #next = 1; // the line that a wait begins with

  apns;

  static async start(options = {}) {
    const phone = new Phone();
    await phone.#start(options);
    return phone;
  }

  async #start({ apns = false, strict = false, arguments: more = [], scenario, tool, ...given }) {
    for (const name of Object.keys(given)) {
      if (!(name in HANDED_ON)) throw new TypeError(`Phone.start has no option "${name}"`);
    }
    this.#folder = mkdtempSync(join(tmpdir(), 'quorvantis-push-'));
    const trusted = join(this.#folder, 'authority.pem');
    const words = Object.entries(given).filter(([, value]) => value !== undefined)
      .flatMap(([name, value]) => [HANDED_ON[name], String(value)]);
    if (apns !== false) words.push('--apns', apns === true ? '0' : String(apns), '--apns-authority', trusted);
    if (strict) words.push('--strict');
    words.push(...more);
    if (scenario !== undefined) words.push('--', String(scenario));
    try {
      this.#tool = await Tool.start(tool, words);
    } catch (error) {
      this.#cleanUp();
      throw error;
    }
    process.once('exit', this.#cleanUp);
    this.#interface = new Interface(this.#tool);
    const facts = this.#tool.facts.apns;
    if (facts) {
      this.apns = Object.freeze({ ...facts, authority: trusted, ca: readFileSync(trusted, 'utf8') });
    }
  }

  #cleanUp = () => rmSync(this.#folder, { recursive: true, force: true });

  async stop() {
    const status = await this.#tool.stop();
    process.off('exit', this.#cleanUp);
    this.#cleanUp();
    return status;
  }

  async token() {
    return (await this.#interface.get('status')).token;
  }

  get address() {
    return this.#tool.facts.address;
  }

  // What is done to the phone

  async play(...lines) {
    const { lines: entries } = await this.#interface.post('steps', lines);
    return entries.map(({ line }) => line);
  }

  register({ appHash = 'f00d', granted = true, ...host } = {}) {
    return this.play({ do: 'authorization', granted }, { do: 'host', appHash, ...host }, { do: 'activate', value: true },
      { do: 'settle' });
  }

  arrive(userInfo, more = {}) {
    return this.play({ phone: 'arrive', userInfo, ...more });
  }

  tap(notification, action) {
    return this.play({ phone: 'tap', notification: numberOf(notification), ...(action !== undefined && { action }) });
  }

  remove(notification) {
    return this.play({ phone: 'remove', notification: numberOf(notification) });
  }

  goTo(state) {
    return this.play({ do: 'application', state });
  }

  end() {
    return this.play({ phone: 'end' });
  }

  relaunch() {
    return this.play({ do: 'relaunch' });
  }

  airplaneMode(on = true) {
    return this.play({ phone: 'airplaneMode', on });
  }

  uninstall() {
    return this.play({ phone: 'uninstall' });
  }

  install() {
    return this.play({ phone: 'install' });
  }

  advance(seconds) {
    return this.play({ do: 'advance', seconds });
  }

  async failNext(...faults) {
    await this.#interface.post('apns/faults', { faults });
  }

  async fresh(scenario = '') {
    await this.#interface.post('fresh', { scenario });
    this.#next = 1;
  }

  // What happened on it

  async wait(members, { seconds = 10 } = {}) {
    const query = Object.fromEntries([...flat(members), ['from', this.#next], ['seconds', seconds]]);
    try {
      const { id, line } = await this.#interface.get('wait', query);
      this.#next = id + 1;
      return line;
    } catch (refusal) {
      if (!(refusal instanceof Refused) || refusal.status !== 408) throw refusal;
      throw new WaitFailed(`${refusal.message}\n${await this.#since()}`);
    }
  }

  async lines() {
    return (await this.#interface.get('lines')).lines.map(({ line }) => line);
  }

  async transcript() {
    return readable((await this.#interface.get('lines')).lines);
  }

  scenario() {
    return this.#interface.text('scenario');
  }

  async #since() {
    const { lines } = await this.#interface.get('lines', { from: this.#next });
    if (lines.length === 0) return `Nothing happened from line ${this.#next} on.`;
    const leftOut = Math.max(0, lines.length - SHOWN_LINES);
    const note = leftOut > 0 ? `, ${leftOut} lines left out` : '';
    return `From line ${this.#next} on${note}:\n${readable(lines.slice(leftOut))}`;
  }
}

if (Symbol.asyncDispose) {
  Phone.prototype[Symbol.asyncDispose] = async function dispose() {
    const status = await this.stop();
    if (status !== 0) throw new PhoneError(`quorvantis-push has ended with status ${status}`);
  };
}

function numberOf(notification) {
  const number = typeof notification === 'object' ? notification.notification : notification;
  if (!Number.isInteger(number)) throw new TypeError(`this is no notification: ${JSON.stringify(notification)}`);
  return number;
}

function flat(members, prefix = '') {
  return Object.entries(members).flatMap(([name, value]) => value !== null && typeof value === 'object'
    ? flat(value, `${prefix}${name}.`)
    : [[prefix + name, String(value)]]);
}
