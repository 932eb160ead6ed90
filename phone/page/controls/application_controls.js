// What a person does with the application as a whole: below the phone.

import { button, element } from "../views/element.js";
import { beInactive, endApplication, relaunch, toBackground, toFront } from "./gestures.js";

const states = { active: "active", inactive: "inactive", background: "in the background" };

export class ApplicationControls {
  constructor(root, actions) {
    this.state = element("strong", { id: "application-state" });
    const gestures = {
      front: ["To the front", toFront],
      background: ["To the background", toBackground],
      inactive: ["Inactive", beInactive],
      end: ["End it", endApplication],
      relaunch: ["Launch again", relaunch],
    };
    this.buttons = Object.fromEntries(
      Object.entries(gestures).map(([id, [label, gesture]]) => [
        id,
        button(label, () => actions.play(gesture), { id: `application-${id}` }),
      ]),
    );
    root.append(
      element("p", {}, "The application is ", this.state),
      element("div", { className: "buttons" }, Object.values(this.buttons)),
    );
  }

  /** The phone at the moment that is shown, which one can act on only when it is the present one. */
  update({ running, application: { state } }, isNow) {
    this.state.textContent = running ? states[state] : "not running";
    const { front, inactive, background, end, relaunch: again } = this.buttons;
    front.disabled = !isNow || (running && state === "active");
    inactive.disabled = !isNow || !running || state === "inactive";
    background.disabled = !isNow || !running || state === "background";
    end.disabled = !isNow || !running;
    again.disabled = !isNow;
  }
}
