// What the push server is to answer next.

import { button, element, refill } from "../views/element.js";
import { queue } from "../views/stored.js";
import { answerInWords } from "../state/request.js";

const answer = (status, body) => ({ status, body });

const answers = [
  ["It registers the phone", answer(200, '{"error":"no","token":"a token of its own"}')],
  ["It refuses, with a reason", answer(200, '{"error":"si","errorDescripcion":"not known here"}')],
  ["An error inside the server (500)", answer(500, "")],
  ["It is overloaded (503)", answer(503, "")],
  ["An empty answer", answer(200, "")],
  ["An answer that is not JSON", answer(200, "<html></html>")],
];

export class ServerPanel {
  /** `row` is that of the step "server": it says which faults there are. */
  constructor(row, actions) {
    const faults = row.keys.find((key) => key.kind === "answers").choices.map((fault) => ({ fault }));
    const all = [...answers, ...faults.map((fault) => [answerInWords(fault), fault])];
    this.choice = element(
      "select",
      { id: "answer" },
      all.map(([label], i) => element("option", { value: i }, label)),
      element("option", { value: "own" }, "Another answer …"),
    );
    this.status = element("input", { type: "number", min: 200, max: 599, value: 200, id: "answer-status" });
    this.body = element("textarea", {
      rows: 3,
      id: "answer-body",
      spellcheck: false,
      value: '{"error":"no","token":"…"}',
    });
    const own = element(
      "div",
      { className: "own-answer", hidden: true },
      element("label", { className: "field" }, element("span", {}, "Status"), this.status),
      element("label", { className: "field" }, element("span", {}, "Body"), this.body),
    );
    this.choice.addEventListener("change", () => {
      own.hidden = this.choice.value !== "own";
    });
    const chosen = () =>
      this.choice.value === "own"
        ? answer(this.status.valueAsNumber, this.body.value)
        : all[this.choice.value][1];
    this.queue = element("div", { id: "answers", "aria-live": "polite" });
    this.content = [
      element("h2", {}, "How the push server answers the next request"),
      element(
        "div",
        { className: "bar" },
        element("label", { className: "field" }, element("span", {}, "The next answer"), this.choice),
        button("Queue it", () => actions.play(() => [{ do: "server", answers: [chosen()] }]), {
          id: "queue-answer",
        }),
      ),
      own,
      this.queue,
    ];
  }

  update({ server: { answers: queued } }) {
    refill(this.queue, [queued], () =>
      queued.length === 0
        ? element("p", { className: "none" }, "None is queued: it registers whoever asks.")
        : [element("h3", {}, "Queued"), queue(queued)],
    );
  }
}
