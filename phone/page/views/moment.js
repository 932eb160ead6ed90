// Any moment again: a slider over all that happened.

import { button, element } from "./element.js";
import { inWords } from "../state/words.js";

export class Moment {
  #history;

  constructor(root, history) {
    this.#history = history;
    const go = (count) => history.lookAt(count);
    this.slider = element("input", {
      type: "range",
      id: "slider",
      min: 0,
      step: 1,
      "aria-label": "The moment that is shown",
      input: () => go(this.slider.valueAsNumber),
    });
    this.back = button("‹", () => go(history.moment - 1), {
      id: "moment-back",
      "aria-label": "One line back",
    });
    this.on = button("›", () => go(history.moment + 1), { id: "moment-on", "aria-label": "One line on" });
    this.now = button("Now", () => go(history.length), { id: "moment-now", className: "primary" });
    this.text = element("output", { id: "moment-text", "aria-live": "off" });
    root.append(this.back, this.on, this.slider, this.now, this.text);
  }

  update() {
    const { length, moment, isNow, isReading, share } = this.#history;
    this.slider.max = length;
    this.slider.value = moment;
    this.slider.disabled = isReading;
    this.text.textContent = isReading
      ? `Reading what happened: ${Math.floor(100 * share)} %`
      : isNow
        ? `Now, after ${length} line${length === 1 ? "" : "s"}`
        : `After line ${moment} of ${length}: ${this.#words(moment)}`;
    this.slider.setAttribute("aria-valuetext", this.text.textContent);
    this.back.disabled = isReading || moment === 0;
    this.on.disabled = this.now.disabled = isNow;
  }

  #words(moment) {
    if (moment === 0) return "nothing has happened";
    const { from, to, text } = inWords(this.#history.lines.at(moment - 1));
    return `${from}${to ? ` → ${to}` : ""}: ${text}`;
  }
}
