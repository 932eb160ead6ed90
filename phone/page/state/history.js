// All lines of a phone's transcript, and what the phone was like after any of them. One moment of it is
// looked at: the last, or one that somebody went back to.

import { after, start } from "./fold.js";
import { parse } from "./json.js";
import { Lines } from "./lines.js";

const mostKept = 256; // states, so that any moment is near one; the more lines, the further they are apart

/** Tells of each change of the lines or of the moment by the event "change". */
export class History extends EventTarget {
  #all = new Lines();
  #awaited = 0; // how many lines there are at least
  #end = null; // the last of them, until the others are here
  #kept = [start];
  #stride = 8; // lines from one kept state to the next
  #last = start;
  #moment = null; // null: the last, whatever comes

  /** How many lines are here. */
  get length() {
    return this.#all.length;
  }

  /** How many lines there were when they began to be read. */
  get awaited() {
    return this.#awaited;
  }

  /** Whether lines are missing that are known to have been written. */
  get isReading() {
    return this.length < this.#awaited;
  }

  /** How much of them is here, from 0 to 1. */
  get share() {
    return this.isReading ? this.length / this.#awaited : 1;
  }

  /** The lines to show: all, or their end as long as they are read. */
  get lines() {
    return (this.isReading && this.#end) || this.#all;
  }

  /** How many lines are looked at. */
  get moment() {
    return this.#moment ?? this.length;
  }

  get isNow() {
    return this.#moment === null;
  }

  /** The phone at the moment that is looked at. */
  get state() {
    return this.stateAfter(this.moment);
  }

  /** The phone after all lines. */
  get last() {
    return this.#last;
  }

  /** The phone after so many lines. */
  stateAfter(count) {
    if (count >= this.length) return this.#last;
    const kept = Math.floor(count / this.#stride);
    let state = this.#kept[kept];
    for (let at = kept * this.#stride; at < count; at += 1) state = after(state, this.#all.at(at));
    return state;
  }

  /** Adds lines, each a JSON text. */
  append(texts) {
    for (const text of texts) {
      const line = parse(text);
      this.#all.append(text, line);
      this.#last = after(this.#last, line);
      if (this.length % this.#stride === 0) this.#keep();
    }
    if (!this.isReading) this.#end = null;
    this.#changed();
  }

  /** Begins again with a fresh phone, of which so many lines are known to come. */
  clear(awaited = 0) {
    this.#all = new Lines();
    this.#awaited = awaited;
    this.#end = null;
    this.#kept = [start];
    this.#stride = 8;
    this.#last = start;
    this.#moment = null;
    this.#changed();
  }

  /** The last of the lines that are awaited, to be shown until the others are here. */
  showEnd(texts) {
    if (!this.isReading) return;
    this.#end = new Lines(this.#awaited - texts.length);
    for (const text of texts) this.#end.append(text, parse(text));
    this.#changed();
  }

  /** Ends when no lines are missing. */
  async complete() {
    while (this.isReading) await new Promise((done) => this.addEventListener("change", done, { once: true }));
  }

  /** Looks at the phone after so many lines; after the last it follows what comes. */
  lookAt(count) {
    this.#moment = count >= this.length ? null : Math.max(0, count);
    this.#changed();
  }

  #keep() {
    this.#kept.push(this.#last);
    if (this.#kept.length <= mostKept) return;
    this.#kept = this.#kept.filter((_, i) => i % 2 === 0);
    this.#stride *= 2;
  }

  #changed() {
    this.dispatchEvent(new Event("change"));
  }
}
