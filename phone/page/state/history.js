// All lines of a phone's transcript, and what the phone was like after any of them. One moment of it is
// looked at: the last, or one that somebody went back to.

import { after, start } from "./fold.js";

const stride = 200; // a state is kept for each so many lines, so that any moment is near one

/** Tells of each change of the lines or of the moment by the event "change". */
export class History extends EventTarget {
  lines = [];
  #kept = [start];
  #last = start;
  #moment = null; // null: the last, whatever comes

  /** How many lines are looked at. */
  get moment() {
    return this.#moment ?? this.lines.length;
  }

  get isNow() {
    return this.#moment === null;
  }

  /** The phone at the moment that is looked at. */
  get state() {
    return this.stateAfter(this.moment);
  }

  /** The phone after so many lines. */
  stateAfter(count) {
    if (count >= this.lines.length) return this.#last;
    const kept = Math.floor(count / stride);
    return this.lines.slice(kept * stride, count).reduce(after, this.#kept[kept]);
  }

  append(lines) {
    for (const line of lines) {
      this.lines.push(line);
      this.#last = after(this.#last, line);
      if (this.lines.length % stride === 0) this.#kept.push(this.#last);
    }
    this.#changed();
  }

  /** Begins again with a fresh phone; `lines` is then another array. */
  clear() {
    this.lines = [];
    this.#kept = [start];
    this.#last = start;
    this.#moment = null;
    this.#changed();
  }

  /** Looks at the phone after so many lines; after the last it follows what comes. */
  lookAt(count) {
    this.#moment = count >= this.lines.length ? null : Math.max(0, count);
    this.#changed();
  }

  #changed() {
    this.dispatchEvent(new Event("change"));
  }
}
