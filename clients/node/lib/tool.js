// The process of `quorvantis-push phone`: started, drained, and ended with the test run, however that ends.

import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { createInterface } from 'node:readline';
import { PhoneError } from './errors.js';

const PATIENCE = 10_000; // milliseconds, for the process to end
const KEPT_LINES = 40; // of what it said on standard error, for messages

/**
 * A running tool. The process ends when its standard input does, so it also ends when this one is killed; and it does not
 * keep this one from ending.
 */
export class Tool {
  #process;
  #ended;
  #said = [];

  /** The tool's first line: how to reach the phone. */
  facts;

  static async start(program, words) {
    const tool = new Tool();
    await tool.#start(program ?? process.env.QUORVANTIS_PUSH ?? 'quorvantis-push', words);
    return tool;
  }

  async #start(name, words) {
    this.#process = spawn(name, ['phone', '--no-page', '--until-eof', ...words], { stdio: 'pipe' });
    this.#ended = once(this.#process, 'close').then(([status, signal]) => status ?? signal);
    this.#ended.catch(() => {}); // told by #firstLine
    this.#process.stdin.on('error', () => {}); // it has ended already
    createInterface({ input: this.#process.stderr }).on('line', (line) => {
      this.#said.push(line);
      if (this.#said.length > KEPT_LINES) this.#said.shift();
    });
    const first = await this.#firstLine(name);
    if (first === undefined) {
      throw new PhoneError(`${name} has ended with status ${await this.#ended}:\n${this.said}`);
    }
    this.facts = JSON.parse(first);
    for (const part of [this.#process, this.#process.stdin, this.#process.stdout, this.#process.stderr]) part.unref();
  }

  async #firstLine(name) {
    const lines = createInterface({ input: this.#process.stdout });
    try {
      const [line] = await Promise.race([once(lines, 'line'), once(lines, 'close'), this.#ended.then(() => [])]);
      return line;
    } catch (error) {
      throw new PhoneError(`${name} can't be started (${error.code}): install the package quorvantis-push, or name the ` +
        'program in the variable QUORVANTIS_PUSH', { cause: error });
    }
  }

  /** The last of what it has said on standard error. */
  get said() {
    return this.#said.join('\n');
  }

  /** The exit status, or the signal that ended it; undefined while it runs. */
  get status() {
    return this.#process.exitCode ?? this.#process.signalCode ?? undefined;
  }

  /** Ends it, if it still runs, and gives its exit status. */
  async stop() {
    this.#process.ref();
    this.#process.stdin.end();
    const timers = [['SIGTERM', PATIENCE], ['SIGKILL', 2 * PATIENCE]]
      .map(([signal, delay]) => setTimeout(() => this.#process.kill(signal), delay));
    try {
      return await this.#ended;
    } finally {
      timers.forEach(clearTimeout);
    }
  }
}
