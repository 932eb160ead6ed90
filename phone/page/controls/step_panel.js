// Any step of a scenario: a form for each row of the table of steps.

import { element } from "../views/element.js";
import { StepForm } from "./form.js";

const nameOf = (row) => (row.variant ? `${row.name}: ${row.variant.value}` : row.name);

export class StepPanel {
  constructor(rows, actions, message) {
    const about = element("p", { className: "about" });
    const preview = element("code", { id: "step-preview" });
    const place = element("div");
    const choose = () => {
      const row = rows[select.selectedIndex];
      const form = new StepForm(row, {
        submit: "Do it",
        failed: (reason) => message.show(reason),
        done: (text) => actions.play(() => [text]),
        changed: () => show(form),
      });
      about.textContent = row.about;
      place.replaceChildren(form.root);
      show(form);
    };
    const show = (form) => {
      try {
        preview.textContent = form.text();
      } catch (error) {
        preview.textContent = error.message;
      }
    };
    const select = element(
      "select",
      { id: "step", change: choose },
      rows.map((row) => element("option", {}, nameOf(row))),
    );
    this.content = [
      element("h2", {}, "Any step that a scenario can have"),
      element("label", { className: "field" }, element("span", {}, "Step"), select),
      about,
      place,
      element("p", {}, preview),
    ];
    choose();
  }
}
