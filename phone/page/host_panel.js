// The application's own code: how it configures the library, and what it asks of it.

import { button, element } from "./element.js";
import { StepForm } from "./form.js";

const settle = { do: "settle" };

const names = {
  appHash: "Hash of the application",
  foreground: "Show notifications while in front",
  deactivateGPS: "Location switched off",
  delegate: "Callbacks that its delegate has",
};

export class HostPanel {
  /** `row` is that of the step "host". */
  constructor(row, actions, message) {
    this.form = new StepForm(row, {
      names,
      submit: "Configure the library",
      failed: (reason) => message.show(reason),
      done: (text) => actions.play(() => [text]),
    });
    const ask = (label, step) => button(label, () => actions.play(() => [step, settle]));
    this.content = [
      element("h2", {}, "How the application configures the library"),
      this.form.root,
      element("h2", {}, "What it asks of the library"),
      element(
        "div",
        { className: "buttons" },
        ask("Switch notifications on", { do: "activate", value: true }),
        ask("Switch notifications off", { do: "activate", value: false }),
        ask("Take the badge off", { do: "call", operation: "resetBadge" }),
      ),
    ];
  }

  update({ host }) {
    this.form.update(host);
  }
}
