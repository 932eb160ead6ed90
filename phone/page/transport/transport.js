// Speaks to the server that holds the phone.

import { messages } from "./event_stream.js";
import { parse, written } from "../state/json.js";
import { breath } from "../state/turns.js";

const firstPause = 250; // milliseconds between attempts to connect
const longestPause = 4000;
const many = 2000; // lines, of which the last are read first
const endLength = 200;
const together = 200; // lines that are told at once

export class ServerError extends Error {
  constructor(status, message) {
    super(message);
    this.status = status;
  }
}

async function refusal(response) {
  const { error, line } = await response.json().catch(() => ({}));
  const reason = error ?? `${response.status} ${response.statusText}`;
  return new ServerError(response.status, line ? `Line ${line}: ${reason}` : reason);
}

const wait = (milliseconds) => new Promise((done) => setTimeout(done, milliseconds));

export class Transport {
  #key;
  #next = 1; // the line that is read next
  #phone = null; // of which phone

  constructor(key) {
    this.#key = key;
  }

  /** Of the page, with the key. */
  get address() {
    return `${location.origin}/#${this.#key}`;
  }

  async #fetch(path, options = {}) {
    const headers = { Authorization: `Bearer ${this.#key}`, ...options.headers };
    const response = await fetch(path, { ...options, headers, cache: "no-store" }).catch(() => {
      throw new ServerError(0, "The phone’s program can’t be reached.");
    });
    if (!response.ok) throw await refusal(response);
    return response;
  }

  async #post(path, body) {
    const headers = { "Content-Type": "application/json" };
    return parse(await (await this.#fetch(path, { method: "POST", headers, body })).text());
  }

  /**
   * Plays lines, each an object or its text. `next` of the answer is the number after the last line that came
   * of it.
   */
  play(lines) {
    const texts = lines.map((line) => (typeof line === "string" ? line : JSON.stringify(line)));
    return this.#post("/api/steps", `[${texts.join(",")}]`);
  }

  fresh(scenario) {
    return this.#post("/api/fresh", JSON.stringify({ scenario }));
  }

  /** What there is to say about a payload's text. */
  lint(payload) {
    return this.#post("/api/lint", JSON.stringify({ payload }));
  }

  /** Orders what the stand-in for Apple's service does with the next requests. */
  orderFaults(faults) {
    return this.#post("/api/apns/faults", JSON.stringify({ faults }));
  }

  async status() {
    return (await this.#fetch("/api/status")).json();
  }

  async schema() {
    return (await this.#fetch("/api/schema")).json();
  }

  async scenario() {
    return (await this.#fetch("/api/scenario")).text();
  }

  /**
   * Reads lines for ever, each once, whatever happens to the connection. `told` has these functions: fresh(count)
   * before the lines of another phone, of which there are so many already; end(texts) with the last of them,
   * when there are many; lines(texts); connection("open", "lost" or "refused", reason); there is a reason when
   * the program answered with one. Texts are lines as the program writes them.
   */
  async follow(told) {
    for (let pause = firstPause; ; pause = Math.min(2 * pause, longestPause)) {
      let reason = "";
      try {
        await this.#read(told, () => (pause = firstPause));
      } catch (error) {
        if (error.status === 401) return told.connection("refused");
        if (error.status > 0) reason = error.message;
      }
      told.connection("lost", reason);
      await wait(pause);
    }
  }

  async #read(told, opened) {
    const from = this.#next;
    const response = await this.#fetch(`/api/lines?from=${from}`, {
      headers: { Accept: "text/event-stream" },
    });
    opened();
    told.connection("open");
    let isFirst = true;
    for await (const batch of messages(response.body)) {
      let lines = [];
      for (const { event, id, data } of batch) {
        if (event === "fresh") {
          const { phone, next } = parse(data);
          if (phone === this.#phone) continue;
          told.lines(lines);
          lines = [];
          this.#begin(phone, next - 1, told);
          if (isFirst && from > 1) return this.#read(told, opened); // the stream leaves out its first lines
        } else if (Number(id) === this.#next) {
          lines.push(data);
          this.#next += 1;
        }
        if (lines.length === together) {
          told.lines(lines);
          lines = [];
          await breath();
        }
        isFirst = false;
      }
      told.lines(lines);
      await breath();
    }
  }

  #begin(phone, count, told) {
    this.#phone = phone;
    this.#next = 1;
    told.fresh(count);
    if (count > many) this.#readEnd(phone, count, told).catch(() => {}); // all lines come anyway
  }

  async #readEnd(phone, count, told) {
    const answer = parse(await (await this.#fetch(`/api/lines?from=${count - endLength + 1}`)).text());
    if (this.#phone === phone) told.end(answer.lines.slice(0, endLength).map(({ line }) => written(line)));
  }
}
