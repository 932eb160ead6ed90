// The application's own code: how it configures the library, and what it asks of it.

import { button, element } from "../views/element.js";
import { StepForm } from "./form.js";

const settle = { do: "settle" };

const names = {
  appHash: "Application hash",
  foreground: "Show notifications in the foreground",
  deactivateGPS: "Location switched off",
  delegate: "The delegate’s callbacks",
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
        ask("Clear the badge", { do: "call", operation: "resetBadge" }),
      ),
    ];
  }

  update({ host }) {
    this.form.update(host);
  }
}
