// Fields of a form, one for each kind of value that a step's key takes. A field reads as the JSON text of its
// value.

import { element } from "../views/element.js";

/**
 * {input, read(), write(value)}: the element to fill in, the JSON text of what is in it, and what it is to
 * show.
 */
function typed(properties, read, write = String) {
  return (key) => {
    const input = element("input", { autocomplete: "off", spellcheck: false, ...properties });
    return {
      input,
      read: () => read(input.value, key),
      write: (value) => {
        input.value = write(value);
      },
    };
  };
}

const text = typed({ type: "text" }, JSON.stringify);

const number = typed({ type: "number", min: 0, step: "any" }, (given, { name }) => {
  if (given === "") throw new Error(`“${name}” needs a number.`);
  return given;
});

const texts = typed(
  { type: "text" },
  (given) =>
    JSON.stringify(
      given
        .split(",")
        .map((one) => one.trim())
        .filter(Boolean),
    ),
  (value) => value.join(", "),
);

function checkbox() {
  const input = element("input", { type: "checkbox" });
  return {
    input,
    read: () => String(input.checked),
    write: (value) => {
      input.checked = value;
    },
  };
}

function select({ choices }) {
  const input = element(
    "select",
    {},
    choices.map((choice) => element("option", {}, choice)),
  );
  return {
    input,
    read: () => JSON.stringify(input.value),
    write: (value) => {
      input.value = value;
    },
  };
}

function someOf({ choices }) {
  const boxes = choices.map((choice) => element("input", { type: "checkbox", value: choice, checked: true }));
  const input = element(
    "span",
    { className: "boxes", role: "group" },
    boxes.map((box) => element("label", {}, box, element("code", {}, box.value))),
  );
  return {
    input,
    isGroup: true,
    read: () => JSON.stringify(boxes.filter((box) => box.checked).map((box) => box.value)),
    write: (value) =>
      boxes.forEach((box) => {
        box.checked = value.includes(box.value);
      }),
  };
}

function json({ name }) {
  const input = element("textarea", { rows: 4, spellcheck: false, value: "" });
  const read = () => {
    try {
      JSON.parse(input.value);
    } catch (error) {
      throw new Error(`“${name}” is not valid JSON: ${error.message}`);
    }
    return input.value;
  };
  return {
    input,
    read,
    write: (value) => {
      input.value = JSON.stringify(value, null, 2);
    },
  };
}

const kinds = {
  string: text,
  hexadecimal: text,
  boolean: checkbox,
  byte: number,
  count: number,
  seconds: number,
  object: json,
  choice: select,
  strings: texts,
  choices: someOf,
  answers: json,
};

let made = 0;

/** The field of a key, with its label; one that may be null has a box for that. */
export function field(key, label) {
  const { input, isGroup, read, write } = (kinds[key.kind] ?? json)(key);
  const id = `field-${(made += 1)}`;
  const none = key.null ? element("input", { type: "checkbox" }) : null;
  if (isGroup) input.setAttribute("aria-label", label);
  else input.id = id;
  const row = element(
    "div",
    { className: `field ${key.kind}` },
    isGroup ? element("span", {}, label) : element("label", { for: id }, label),
    input,
    none && element("label", { className: "none-box" }, none, "none"),
  );
  const showNone = () => {
    if (none) input.inert = none.checked;
    row.classList.toggle("is-none", Boolean(none?.checked));
  };
  none?.addEventListener("change", showNone);
  return {
    name: key.name,
    row,
    read: () => (none?.checked ? "null" : read()),
    write(value) {
      if (none) none.checked = value === null;
      if (value !== null && value !== undefined) write(value);
      showNone();
    },
  };
}
