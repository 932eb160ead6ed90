// What the linter found, with what to do about it.

import { button, element } from "./element.js";

const severities = { error: "Error", warning: "Warning", note: "Note" };

function item(finding, actions) {
  const { severity, message, line, consequence, remedy, edits, code } = finding;
  const place = actions && button(`line ${line}`, () => actions.show(finding), { className: "link" });
  const mend =
    actions &&
    edits.length > 0 &&
    button("Fix it", () => actions.mend(finding), {
      className: "small",
      "aria-label": `Fix it: ${remedy}`,
    });
  return element(
    "li",
    { className: `finding ${severity}` },
    element("p", {}, element("strong", {}, `${severities[severity]}: `), message, " ", place),
    element("p", {}, consequence),
    element("p", {}, remedy, " ", mend),
    element("code", {}, code),
  );
}

/**
 * A list of the findings. `actions` has show(finding), which goes to its place, and mend(finding), which
 * applies its remedy; without it the findings can only be read.
 */
export function findingsList(findings, leftOut = 0, actions = null) {
  const more = leftOut > 0 && element("li", { className: "finding" }, `… and ${leftOut} more`);
  return element(
    "ul",
    { className: "plain findings" },
    findings.map((finding) => item(finding, actions)),
    more,
  );
}

/** In a few words: "1 error, 2 warnings". */
export function counted(findings) {
  const counts = Object.keys(severities)
    .map((severity) => [findings.filter((finding) => finding.severity === severity).length, severity])
    .filter(([count]) => count > 0)
    .map(([count, severity]) => `${count} ${severity}${count === 1 ? "" : "s"}`);
  return counts.join(", ") || "No findings";
}
