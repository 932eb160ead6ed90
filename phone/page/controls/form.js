// A form for a step, made from the table of steps: what is filled in becomes the step's text.

import { button, element } from "../views/element.js";
import { field } from "./fields.js";

export class StepForm {
  #row;
  #fields;
  #touched = new Set();
  #written = new Map();

  /**
   * `row` is the step's row of the table. `names` names the keys that are offered, in the words of the form;
   * all are when it is left out. `done(text)` gets the step and gives a promise of whether it was done,
   * `failed(reason)` what is wrong with what was filled in. `changed` hears that something was filled in.
   */
  constructor(row, { names, submit, done, failed, changed = () => {} }) {
    this.#row = row;
    const keys = row.keys.filter((key) => !names || key.name in names);
    this.#fields = keys.map((key) => field(key, names?.[key.name] ?? key.name));
    for (const one of this.#fields) {
      const touch = () => {
        this.#touched.add(one.name);
        changed();
      };
      one.row.addEventListener("input", touch);
      one.row.addEventListener("change", touch);
    }
    this.root = element(
      "form",
      {
        className: "step-form",
        noValidate: true,
        submit: (event) => {
          event.preventDefault();
          this.#submit(done, failed);
        },
      },
      this.#fields.map((one) => one.row),
      element(
        "div",
        { className: "field" },
        button(submit, () => {}, { type: "submit" }),
      ),
    );
  }

  /**
   * The step, with the keys that were filled in or that it needs. Throws an Error that says what is wrong.
   */
  text() {
    const { variant } = this.#row;
    const parts = [`"do":${JSON.stringify(this.#row.name)}`];
    if (variant) parts.push(`${JSON.stringify(variant.key)}:${JSON.stringify(variant.value)}`);
    const needed = new Set(this.#row.keys.filter((key) => key.required).map((key) => key.name));
    for (const { name, read } of this.#fields) {
      if (!needed.has(name) && !this.#touched.has(name)) continue;
      const value = read();
      if (value !== this.#written.get(name)) parts.push(`${JSON.stringify(name)}:${value}`);
    }
    return `{${parts.join(",")}}`;
  }

  /** Shows what holds, but for what is being filled in. Then a step has only what differs from it. */
  update(values) {
    for (const { name, write } of this.#fields) {
      if (!(name in values)) continue;
      this.#written.set(name, JSON.stringify(values[name]));
      if (!this.#touched.has(name)) write(values[name]);
    }
  }

  async #submit(done, failed) {
    try {
      const text = this.text();
      if (this.#written.size > 0 && text === `{"do":${JSON.stringify(this.#row.name)}}`) {
        throw new Error("Nothing was changed.");
      }
      if (await done(text)) for (const name of this.#written.keys()) this.#touched.delete(name);
    } catch (error) {
      failed(error.message);
    }
  }
}
