// In a window that is too narrow for all of the page, one of its parts is shown, and another one is a tap away.

import { button, element } from "../views/element.js";

const names = { device: "Phone", controls: "Controls", past: "What happened" };

export class Places {
  #seen = 0; // lines that were in sight
  #count = 0;

  /** `shown` is called when another part may have come into sight. */
  constructor(root, shown) {
    this.news = element("span", { className: "news" });
    this.buttons = Object.entries(names).map(([id, name]) =>
      button([name, id === "past" && this.news].filter(Boolean), () => this.go(id), { "data-place": id }),
    );
    this.shown = shown;
    root.append(...this.buttons);
    new ResizeObserver(() => this.#draw()).observe(document.getElementById("past"));
    this.go("device");
  }

  go(id) {
    document.body.dataset.place = id;
    for (const one of this.buttons) one.setAttribute("aria-pressed", String(one.dataset.place === id));
    this.#draw();
    this.shown();
  }

  /** There are so many lines now. */
  update(count) {
    this.#count = count;
    this.#draw();
  }

  #draw() {
    const isInSight = document.getElementById("past").offsetParent !== null;
    if (isInSight || this.#count < this.#seen) this.#seen = this.#count;
    const count = this.#count - this.#seen;
    this.news.textContent = count > 0 ? `${count} new` : "";
  }
}
