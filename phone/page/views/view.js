// All that shows a history: the phone, the timeline with its slider, and what is stored. The live page and a
// saved one are both made of it.

import { Moment } from "./moment.js";
import { PhoneView } from "./phone.js";
import { Stored } from "./stored.js";
import { Timeline } from "./timeline.js";

/**
 * Shows the history in the document's places for it. `told` is what the phone tells; `drawn` is called with each
 * drawing.
 */
export function show(history, told, drawn = () => {}) {
  const at = (id) => document.getElementById(id);
  const phone = new PhoneView(at("phone"), told);
  const moment = new Moment(at("moment"), history);
  const timeline = new Timeline(at("timeline"), history);
  const stored = new Stored(at("stored"));
  let isDue = false;
  const draw = () => {
    isDue = false;
    const { isNow, isReading } = history;
    moment.update();
    timeline.update();
    document.body.classList.toggle("past", !isNow);
    document.body.classList.toggle("reading", isReading);
    if (!isReading) {
      // Until then it is not known what the phone is like.
      phone.draw(history.state, isNow);
      stored.draw(history.state);
    }
    drawn();
  };
  history.addEventListener("change", () => {
    if (!isDue) requestAnimationFrame(draw);
    isDue = true;
  });
  draw();
}
