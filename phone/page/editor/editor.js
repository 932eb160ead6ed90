// The payload editor: the text with its findings, and beside it what the payload will do.

import { button, element } from "../views/element.js";
import { openButton, save, takeDropped } from "../controls/files.js";
import { counted, findingsList } from "../views/findings.js";
import { outcomeCards } from "./outcomes.js";
import { templates } from "./templates.js";

const { CodeMirror } = globalThis;
const pause = 200; // milliseconds after the last key before the text is judged

function templateChoice(chosen) {
  const groups = templates.map(([group, payloads]) =>
    element(
      "optgroup",
      { label: group },
      Object.keys(payloads).map((name) => element("option", {}, name)),
    ),
  );
  const select = element(
    "select",
    {
      id: "template",
      change: () => {
        for (const [, payloads] of templates) if (select.value in payloads) chosen(payloads[select.value]);
        select.selectedIndex = 0;
      },
    },
    element("option", { value: "" }, "Choose …"),
    groups,
  );
  return element("label", { className: "field" }, element("span", {}, "Start from"), select);
}

/** Whether it is the text of a JSON object, and so something that can arrive. */
function isObject(text) {
  try {
    const value = JSON.parse(text);
    return typeof value === "object" && value !== null && !Array.isArray(value);
  } catch {
    return false;
  }
}

/** Why a notification that arrives may not be seen. */
function hintFor({ airplane, authorization: { isDecided, granted } }, build) {
  if (build === "simulator") return "The library’s simulator build does not handle notifications.";
  if (airplane) return "Airplane mode is on: notifications wait until it is off.";
  if (!isDecided) {
    return "The application has not been allowed to show notifications yet: switch them on first.";
  }
  return granted ? "" : "The user does not allow notifications: the system shows none.";
}

export class Editor {
  #judge;
  #report = null;
  #judged = ""; // the text that the report is of
  #phone = null;
  #build = "";

  /** `judge(text)` gives a promise of the linter's answer; `arrives(text)` has the payload arrive. */
  constructor({ judge, arrives }) {
    this.#judge = judge;
    const holder = element("div", { className: "code" });
    this.findings = element("div", { id: "findings", role: "region", "aria-label": "Findings" });
    this.count = element("p", { className: "count", role: "status" });
    this.size = element("span", { id: "size" });
    this.hint = element("p", { id: "hint", role: "status" });
    this.outcomes = element("ol", {
      id: "outcomes",
      className: "plain",
      tabIndex: 0, // it scrolls
      "aria-label": "What it will do in each state",
    });
    this.arrive = button("Arrives now", () => isObject(this.text) && arrives(this.text), {
      id: "arrive",
      className: "primary",
    });
    const opened = (text) => this.set(text);
    this.panel = element(
      "div",
      { id: "editor" },
      element(
        "div",
        { className: "bar" },
        templateChoice((payload) => this.set(JSON.stringify(payload, null, 2))),
        openButton("Open .apns …", ".apns,.json,application/json", opened),
        button("Save .apns", () => save(this.text, "notification.apns", "application/json")),
        this.arrive,
      ),
      this.hint,
      element(
        "div",
        { className: "side-by-side" },
        element(
          "div",
          {},
          holder,
          element("p", { className: "facts" }, this.count, this.size),
          this.findings,
        ),
        element("div", {}, element("h2", {}, "What it will do"), this.outcomes),
      ),
    );
    takeDropped(this.panel, opened);
    this.code = CodeMirror(holder, {
      mode: { name: "javascript", json: true },
      value: JSON.stringify(Object.values(templates[0][1])[0], null, 2),
      lineNumbers: true,
      lineWrapping: true,
      matchBrackets: true,
      autoCloseBrackets: true,
      dragDrop: false,
      inputStyle: "contenteditable",
      screenReaderLabel: "Payload",
      viewportMargin: Infinity,
      gutters: ["CodeMirror-lint-markers"],
      extraKeys: {
        Tab: false,
        "Shift-Tab": false,
        "Ctrl-Enter": () => this.arrive.click(),
        "Cmd-Enter": () => this.arrive.click(),
      },
      lint: { getAnnotations: (text, done) => this.#lint(text, done), async: true, delay: pause },
    });
    // Without a role its label says nothing.
    this.code.getInputField().setAttribute("role", "textbox");
    this.code.getInputField().setAttribute("aria-multiline", "true");
  }

  get text() {
    return this.code.getValue();
  }

  set(text) {
    this.code.setValue(text);
    this.code.focus();
  }

  /** The phone as it is now, which some of what is shown goes by. */
  update(phone) {
    const differs =
      this.#phone?.application !== phone.application ||
      this.#phone?.host !== phone.host ||
      this.#phone?.running !== phone.running;
    const isOther = this.#phone && this.#phone.device.systemVersion !== phone.device.systemVersion;
    this.#phone = phone;
    this.#drawHint();
    if (isOther) this.code.performLint();
    if (differs) this.#drawOutcomes();
  }

  /** Which of its builds the library is. */
  showStatus({ build }) {
    this.#build = build;
    this.#drawHint();
  }

  /** The editor was out of sight, where it could not measure itself. */
  refresh() {
    this.code.refresh();
  }

  #drawHint() {
    this.hint.textContent = this.#phone ? hintFor(this.#phone, this.#build) : "";
  }

  async #lint(text, done) {
    this.arrive.disabled = !isObject(text);
    const report = await this.#judge(text).catch(() => null);
    if (!report || text !== this.text) return done([]);
    this.#report = report;
    this.#judged = text;
    const at = (index) => this.code.posFromIndex(index);
    done(
      report.findings.map(({ from, to, severity, message, remedy }) => ({
        from: at(from),
        to: at(Math.max(to, from + 1)),
        severity,
        message: `${message}. ${remedy}`,
      })),
    );
    this.#draw();
  }

  #draw() {
    const { findings, findingsLeftOut, bytes, largest } = this.#report;
    this.count.textContent = counted(findings);
    this.size.textContent = `${bytes.toLocaleString("en")} of ${largest.toLocaleString("en")} bytes`;
    this.size.classList.toggle("bad", bytes > largest);
    this.findings.replaceChildren(
      findingsList(findings, findingsLeftOut, {
        show: (finding) => this.#show(finding),
        mend: (finding) => this.#mend(finding),
      }),
    );
    this.#drawOutcomes();
  }

  #drawOutcomes() {
    if (!this.#report || !this.#phone) return;
    const cards = outcomeCards(this.#report, this.#phone);
    this.outcomes.replaceChildren(
      ...(cards.length > 0
        ? cards
        : [element("li", { className: "none" }, "Nothing: no application receives it.")]),
    );
  }

  #show({ from, to }) {
    this.code.setSelection(this.code.posFromIndex(to), this.code.posFromIndex(from));
    this.code.focus();
  }

  #mend({ edits }) {
    if (this.text !== this.#judged) return; // the findings are about to change, too
    this.code.operation(() => {
      for (const { from, to, text } of [...edits].reverse()) {
        this.code.replaceRange(text, this.code.posFromIndex(from), this.code.posFromIndex(to));
      }
    });
    this.code.focus();
  }
}
