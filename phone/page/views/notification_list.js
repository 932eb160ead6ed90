// The system's list of notifications, the latest first. Only those in sight are elements, however many there are.

import { element } from "./element.js";
import { notification } from "./notification.js";

const overscan = 4; // notifications beyond each edge
const gap = 8; // pixels

export class NotificationList {
  #scroller;
  #list = null;
  #entries = [];
  #act;
  #drawn = new Map(); // the elements, by their places

  /** `scroller` is the element in which it is scrolled. */
  constructor(scroller) {
    this.#scroller = scroller;
    scroller.addEventListener("scroll", () => this.#draw());
    new ResizeObserver(() => this.#draw()).observe(scroller);
  }

  /** The list's element, to be put into the scroller at once. */
  show(entries, act) {
    this.#entries = entries;
    this.#act = act;
    this.#drawn = new Map();
    this.#list = element("ul", { className: "plain notifications", "aria-label": "Notifications" });
    queueMicrotask(() => this.#draw());
    return this.#list;
  }

  #draw() {
    const { length } = this.#entries;
    if (!this.#list?.isConnected || length === 0) return;
    if (this.#drawn.size === 0) this.#place(0, 1); // to be measured
    const height = this.#list.firstChild.offsetHeight;
    if (height === 0) return; // it is out of sight
    const step = height + gap;
    const above = this.#scroller.getBoundingClientRect().top - this.#list.getBoundingClientRect().top;
    const first = Math.floor(above / step) - overscan;
    const last = Math.ceil((above + this.#scroller.clientHeight) / step) + overscan;
    this.#list.style.height = `${length * step - gap}px`;
    this.#place(Math.max(0, first), Math.min(length, last));
    for (const [index, item] of this.#drawn) item.style.top = `${index * step}px`;
  }

  /** Makes the elements from one place to before another, and takes the others away. */
  #place(first, last) {
    const drawn = new Map();
    for (let index = first; index < last; index += 1) {
      drawn.set(index, this.#drawn.get(index) ?? this.#item(index));
    }
    for (const [index, item] of this.#drawn) if (!drawn.has(index)) item.remove();
    let before = null;
    for (const item of [...drawn.values()].reverse()) {
      if (item.parentNode !== this.#list || item.nextSibling !== before)
        this.#list.insertBefore(item, before);
      before = item;
    }
    this.#drawn = drawn;
  }

  #item(index) {
    const item = notification(this.#entries.at(-1 - index), this.#act);
    item.setAttribute("aria-setsize", this.#entries.length);
    item.setAttribute("aria-posinset", index + 1);
    return item;
  }
}
