// Lines of a phone's transcript as they were written, and the rows in which they are shown: one for each line, but
// one together for the values that are stored in one go.

import { parse } from "./json.js";
import { actorOf } from "./words.js";

const isStored = (line) => line?.event === "stored" && line.value !== null;

export class Lines {
  #texts = [];
  #starts = []; // of each row: how many lines there are before it
  #actors = []; // of each row: who does it
  #endsStored = false;

  /** `before` is how many lines came before the first one here. */
  constructor(before = 0) {
    this.before = before;
  }

  /** How many lines there are with the last one here. */
  get length() {
    return this.before + this.#texts.length;
  }

  /** How many rows. */
  get rows() {
    return this.#starts.length;
  }

  /** Adds a line, of which `line` is the value. */
  append(text, line) {
    const stored = isStored(line);
    if (!stored || !this.#endsStored) {
      this.#starts.push(this.length);
      this.#actors.push(actorOf(line));
    }
    this.#texts.push(text);
    this.#endsStored = stored;
  }

  /** The line that comes after so many. */
  at(count) {
    return parse(this.#texts[count - this.before]);
  }

  /** How many lines there are before a row. */
  startOf(row) {
    return this.#starts[row];
  }

  /** How many there are with its last one. */
  endOf(row) {
    return this.#starts[row + 1] ?? this.length;
  }

  actorOf(row) {
    return this.#actors[row];
  }

  linesOf(row) {
    const start = this.startOf(row);
    return Array.from({ length: this.endOf(row) - start }, (_, i) => this.at(start + i));
  }

  /** All texts, one on each line. */
  written() {
    return this.#texts.join("\n");
  }
}
