// What comes up above the phone's screen: an address, the library's alerts, the system's question.

import { button, element } from "./element.js";
import { shown } from "../state/json.js";

const isSafe = (url) => /^(https?|mailto|tel|sms):/i.test(url);

/** An address, as a link where it is one that is safe to follow. */
export function address(url) {
  if (url === null) return element("span", {}, "Nothing: the text is not an address.");
  if (!isSafe(url)) return element("code", {}, url);
  return element("a", { href: url, target: "_blank", rel: "noopener noreferrer" }, url);
}

/** The system was asked to open an address. */
export function opened({ url }) {
  return element(
    "div",
    { className: "opened" },
    element("strong", {}, "The application opens"),
    address(url),
  );
}

const text = (value) => (typeof value === "string" ? value : value === null ? "" : shown(value));

const deepest = 3; // alerts below the uppermost that peek out

/** An alert of the library; `depth` alerts are above it. */
export function alert({ alert: number, title, message, buttons }, depth, act) {
  const box = element(
    "div",
    { className: "alert", role: "alertdialog", "aria-label": `Alert ${number}: ${text(title)}` },
    element("strong", {}, text(title)),
    text(message) && element("p", {}, text(message)),
    buttons.map((name) => button(text(name), () => act.ok(number), { disabled: depth > 0 || !act })),
  );
  box.style.setProperty("--depth", Math.min(depth, deepest));
  box.inert = depth > 0;
  return box;
}

/** The system asks for permission. */
export function prompt(act) {
  return element(
    "div",
    { id: "prompt", className: "alert", role: "alertdialog", "aria-label": "The system asks for permission" },
    element("strong", {}, "“Your application” would like to send you notifications"),
    element("p", {}, "They may have alerts, sounds and icon badges."),
    element(
      "div",
      { className: "two" },
      button("Don’t allow", () => act.answer(false), { disabled: !act }),
      button("Allow", () => act.answer(true), { disabled: !act }),
    ),
  );
}
