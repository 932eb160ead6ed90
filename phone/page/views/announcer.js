// Says what happens for those who do not see it: each new line in words.

import { element } from "./element.js";
import { inWords } from "../state/words.js";

const most = 12; // lines that are said of those that come at once
const kept = 30; // that can be read again

export class Announcer {
  #history;
  #lines = null;
  #said = 0;

  constructor(root, history) {
    this.#history = history;
    this.log = root;
  }

  /** Says the lines that have come since the last time, but none of those that were there before the page. */
  update() {
    const { lines, isReading, awaited } = this.#history;
    if (isReading) return;
    if (lines !== this.#lines) [this.#lines, this.#said] = [lines, awaited];
    const first = Math.max(this.#said, lines.length - most);
    if (first > this.#said) this.#say(`Lines without words: ${first - this.#said}`);
    for (let at = first; at < lines.length; at += 1) {
      const { from, to, text } = inWords(lines.at(at));
      this.#say(`${from}${to && ` to ${to}`}: ${text}`);
    }
    this.#said = Math.max(this.#said, lines.length);
    while (this.log.childElementCount > kept) this.log.firstChild.remove();
  }

  #say(text) {
    this.log.append(element("p", {}, text));
  }
}
