// The phone around the application: its network, its clock, its token and its facts.

import { button, element, toggle } from "../views/element.js";
import { StepForm } from "./form.js";
import { advance, airplaneMode, newToken } from "./gestures.js";

const names = {
  systemVersion: "System version",
  name: "Name",
  model: "Model",
  languages: "Languages",
  country: "Country",
};

const times = { "1 second": 1, "1 minute": 60, "1 hour": 3600, "1 day": 86400 };

/** 32 random bytes in hexadecimal digits. */
const randomToken = () =>
  [...crypto.getRandomValues(new Uint8Array(32))].map((byte) => byte.toString(16).padStart(2, "0")).join("");

export class DevicePanel {
  #on = false;

  /** `row` is that of the step "device". */
  constructor(row, actions, message) {
    this.airplane = toggle("Airplane mode", false, () => actions.play(airplaneMode(!this.#on)), {
      id: "airplane",
    });
    this.token = element("code", { id: "token" });
    this.form = new StepForm(row, {
      names,
      submit: "Change the phone",
      failed: (reason) => message.show(reason),
      done: (text) => actions.play(() => [text]),
    });
    this.content = [
      element("h2", {}, "Network and time"),
      element("div", { className: "buttons" }, this.airplane),
      element(
        "div",
        { className: "buttons", role: "group", "aria-label": "Let time pass" },
        element("span", {}, "Let time pass:"),
        Object.entries(times).map(([label, seconds]) => button(label, () => actions.play(advance(seconds)))),
      ),
      element("h2", {}, "Device token"),
      element("p", {}, this.token),
      element(
        "div",
        { className: "buttons" },
        button("Hand out a new token", () => actions.play(newToken(randomToken())), { id: "new-token" }),
      ),
      element("h2", {}, "About the phone"),
      this.form.root,
    ];
  }

  update({ airplane, device }) {
    this.#on = airplane;
    this.airplane.setAttribute("aria-pressed", String(airplane));
    this.token.textContent = device.token ?? "none";
    this.form.update(device);
  }
}
