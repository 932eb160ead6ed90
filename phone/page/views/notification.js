// A notification as the system shows it.

import { button, element } from "./element.js";
import { textsOf } from "../state/fold.js";

/** As an item of a list. `act` has what tapping it and taking it off do; without it one can only look. */
export function notification(entry, act) {
  const { title, subtitle, body } = textsOf(entry.userInfo);
  const content = [
    element("span", { className: "app-icon small", "aria-hidden": "true" }),
    element(
      "span",
      { className: "texts" },
      element("strong", {}, title || "Your application"),
      subtitle && element("strong", {}, subtitle),
      element("span", {}, body),
    ),
  ];
  return element(
    "li",
    { className: "notification" },
    button(content, () => act.tap(entry), { className: "notification-body", disabled: !act }),
    act?.takeOff &&
      button("×", () => act.takeOff(entry.notification), {
        className: "take-off",
        "aria-label": `Remove “${title || body}” from the list`,
      }),
  );
}
