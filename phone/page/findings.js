// What the linter found, with what to do about it.

import { button, element } from "./element.js";

const severities = { error: "Error", warning: "Warning", note: "Note" };

/** A list of the findings. `show(finding)` goes to its place, `mend(finding)` applies its remedy. */
export function findingsList(findings, leftOut, { show, mend }) {
  const items = findings.map((finding) =>
    element(
      "li",
      { className: `finding ${finding.severity}` },
      element(
        "p",
        {},
        element("strong", {}, `${severities[finding.severity]}: `),
        finding.message,
        " ",
        button(`line ${finding.line}`, () => show(finding), { className: "link" }),
      ),
      element("p", { className: "consequence" }, finding.consequence),
      element(
        "p",
        { className: "remedy" },
        finding.remedy,
        finding.edits.length > 0 && [
          " ",
          button("Mend it", () => mend(finding), {
            className: "small",
            "aria-label": `Mend it: ${finding.remedy}`,
          }),
        ],
      ),
      element("code", {}, finding.code),
    ),
  );
  const more = leftOut > 0 && element("li", { className: "finding" }, `… and ${leftOut} more`);
  return element("ul", { className: "plain" }, items, more);
}

/** In a few words: "1 error, 2 warnings". */
export function counted(findings) {
  const counts = Object.keys(severities)
    .map((severity) => [findings.filter((finding) => finding.severity === severity).length, severity])
    .filter(([count]) => count > 0)
    .map(([count, severity]) => `${count} ${severity}${count === 1 ? "" : "s"}`);
  return counts.join(", ") || "Nothing to find fault with";
}
