// What the stand-in for Apple's service does with the next requests of a backend.

import { button, element } from "../views/element.js";

const answer = (status, reason) => ({ fault: "answer", status, reason });

const faults = [
  ["Too many requests (429)", answer(429, "TooManyRequests")],
  ["The token is no longer registered (410)", answer(410, "Unregistered")],
  ["The provider’s token has expired (403)", answer(403, "ExpiredProviderToken")],
  ["An error inside the service (500)", answer(500, "InternalServerError")],
  ["The service is not available (503)", answer(503, "ServiceUnavailable")],
  ["The connection is closed gracefully", { fault: "goaway" }],
  ["The connection is cut before the phone gets it", { fault: "cut" }],
  ["The phone gets it, and the connection is cut", { fault: "lost" }],
  ["No answer", { fault: "silence" }],
  ["The answer comes 2 seconds later", { fault: "slow", seconds: 2 }],
];

export class ApplePanel {
  constructor(transport, actions) {
    this.facts = element("p", { id: "backend" });
    this.choice = element(
      "select",
      { id: "fault" },
      faults.map(([label], i) => element("option", { value: i }, label)),
    );
    this.times = element("input", { type: "number", min: 1, max: 1000, value: 1, id: "fault-times" });
    this.ordered = element("p", { id: "faults", role: "status" });
    const order = (label, list) =>
      actions.attempt(async () => {
        await transport.orderFaults(list);
        this.ordered.textContent = label;
      });
    const orderChosen = () => {
      const [label, fault] = faults[this.choice.value];
      const times = this.times.valueAsNumber;
      return order(`Ordered: ${label}, ${times === 1 ? "once" : `${times} times`}.`, [{ ...fault, times }]);
    };
    this.controls = element(
      "div",
      { hidden: true },
      element(
        "div",
        { className: "bar" },
        element("label", { className: "field" }, element("span", {}, "A backend’s next requests"), this.choice),
        element("label", { className: "field" }, element("span", {}, "How many"), this.times),
        button("Order it", orderChosen, { id: "order-fault" }),
        button("Back to normal", () => order("Back to normal.", []), { id: "no-fault" }),
      ),
      this.ordered,
    );
    this.content = [element("h2", {}, "Apple’s service, for a backend"), this.facts, this.controls];
  }

  /** Says how a backend reaches the phone, when it does. */
  showStatus({ apns }) {
    this.controls.hidden = !apns;
    this.facts.textContent = apns
      ? `A backend reaches this phone at https://localhost:${apns.port}, with its device token and the topic ${apns.topic}.`
      : "A backend reaches this phone when the program is started with --apns.";
  }
}
