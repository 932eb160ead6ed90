// The phone's interface over HTTP: a request, its answer, and a refusal as an exception.

import { request } from 'node:http';
import { PhoneError, Refused } from './errors.js';

/** Asks the phone that a tool runs. Each request has a connection of its own, so none keeps the process from ending. */
export class Interface {
  #tool;

  constructor(tool) {
    this.#tool = tool;
  }

  async get(path, query = {}) {
    return JSON.parse(await this.text(path, query));
  }

  async text(path, query = {}) {
    const words = new URLSearchParams(query).toString();
    return this.#ask('GET', words ? `${path}?${words}` : path);
  }

  async post(path, body) {
    return JSON.parse(await this.#ask('POST', path, JSON.stringify(body)));
  }

  async #ask(method, path, body) {
    let answer;
    try {
      answer = await this.#exchange(method, path, body);
    } catch (error) {
      throw new PhoneError(`the phone can't be reached: ${error.message}${this.#end}`, { cause: error });
    }
    if (answer.status >= 400) throw new Refused(answer.status, JSON.parse(answer.text).error);
    return answer.text;
  }

  #exchange(method, path, body) {
    const { key, port } = this.#tool.facts;
    const headers = { Authorization: `Bearer ${key}` };
    if (body !== undefined) headers['Content-Type'] = 'application/json';
    return new Promise((resolve, reject) => {
      const asked = request({ host: '127.0.0.1', port, method, path: `/api/${path}`, headers, agent: false }, (answer) => {
        const parts = [];
        answer.on('data', (part) => parts.push(part));
        answer.on('end', () => resolve({ status: answer.statusCode, text: Buffer.concat(parts).toString() }));
        answer.on('error', reject);
      });
      asked.on('error', reject);
      asked.end(body);
    });
  }

  get #end() {
    const { said, status } = this.#tool;
    return status === undefined ? '' : `; quorvantis-push has ended with status ${status}:\n${said}`;
  }
}
