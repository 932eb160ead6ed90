// The timeline: a row for each thing that happened. Only the rows in sight are elements, however many there
// are.

import { details } from "./details.js";
import { button, element, toggle } from "./element.js";
import { actors, inWordsTogether } from "../state/words.js";

const overscan = 8; // rows beyond each edge
const tallest = 8_000_000; // pixels of an element, which browsers can draw

const isQuiet = (line) => line.do === "settle";
const isBad = (line) =>
  line.event === "raised" ||
  ["ended", "requestFailed", "settingsFailed"].includes(line.screen) ||
  (line.screen === "provider" && line.status !== 200);
const kindOf = (line) => ["do", "event", "phone", "screen"].find((kind) => kind in line);
const classOf = (actor) => `actor ${actor.toLowerCase().replaceAll(" ", "-")}`;

export class Timeline {
  #history;
  #lines = null;
  #read = 0; // rows that are known already
  #visible = []; // the rows that pass the filter
  #hidden = new Set();
  #wasNow = true; // when it was updated last
  #wasAtEnd = true; // when it was scrolled last: what comes then stays in sight
  #open = -1; // which of the visible rows is open
  #openHeight = 0;
  #focused = 0;
  #rowHeight = 32; // pixels, as the style says
  #drawn = new Map(); // the elements of the rows in sight, with the facts that they show

  constructor(root, history) {
    this.#history = history;
    this.list = element("ol", { className: "rows", "aria-label": "What happened, line by line" });
    this.scroller = element(
      "div",
      { className: "scroller", scroll: () => this.#scrolled(), keydown: (event) => this.#key(event) },
      this.list,
    );
    this.nothing = element("p", { className: "none" }, "Nothing has happened yet.");
    root.append(
      element(
        "div",
        { className: "bar" },
        element("h2", {}, "What happened"),
        element(
          "div",
          { className: "filters", role: "group", "aria-label": "Show what was done by" },
          actors.map((actor) => this.#filter(actor)),
        ),
      ),
      this.nothing,
      this.scroller,
    );
    new ResizeObserver(() => this.#resized()).observe(this.scroller);
  }

  /** Looks for what is new in the history and draws. */
  update() {
    const { lines, moment, isNow } = this.#history;
    const isAnother = lines !== this.#lines;
    if (isAnother) this.#begin(lines);
    const hasGrown = this.#read < lines.rows;
    for (; this.#read < lines.rows; ++this.#read) {
      if (this.#passes(this.#read)) this.#visible.push(this.#read);
    }
    this.nothing.hidden = lines.length > 0;
    this.scroller.hidden = lines.length === 0;
    this.#draw();
    if (!isNow) this.#reveal(this.#lastBefore(moment));
    else if (!this.#wasNow || (hasGrown && (this.#wasAtEnd || isAnother))) {
      this.scroller.scrollTop = this.scroller.scrollHeight;
    }
    this.#wasNow = isNow;
  }

  /** The rows may have another height now; those that were in sight stay there. */
  #resized() {
    const first = this.#above / this.#rowHeight;
    this.#rowHeight = parseInt(getComputedStyle(this.scroller).getPropertyValue("--row"), 10);
    this.#draw();
    const { moment, isNow } = this.#history;
    if (!isNow) this.#reveal(this.#lastBefore(moment));
    else if (this.#wasAtEnd) this.scroller.scrollTop = this.scroller.scrollHeight;
    else this.#scrollTo(first * this.#rowHeight);
    this.#draw();
  }

  #scrolled() {
    const { scrollTop, clientHeight, scrollHeight } = this.scroller;
    this.#wasAtEnd = scrollTop + clientHeight >= scrollHeight - this.#rowHeight;
    this.#draw();
  }

  #begin(lines) {
    [this.#lines, this.#visible, this.#read, this.#open] = [lines, [], 0, -1];
    for (const { item } of this.#drawn.values()) item.remove();
    this.#drawn = new Map();
  }

  #filter(actor) {
    const chip = toggle(
      actor,
      true,
      () => {
        const isHidden = this.#hidden.delete(actor);
        if (!isHidden) this.#hidden.add(actor);
        chip.setAttribute("aria-pressed", String(isHidden));
        this.#begin(this.#lines);
        this.update();
      },
      { className: `chip ${classOf(actor)}` },
    );
    return chip;
  }

  #passes(row) {
    return !this.#hidden.has(this.#lines.actorOf(row));
  }

  /** The last visible row that has one of the first `count` lines. */
  #lastBefore(count) {
    let [low, high] = [0, this.#visible.length];
    while (low < high) {
      const middle = (low + high) >> 1;
      if (this.#lines.startOf(this.#visible[middle]) < count) low = middle + 1;
      else high = middle;
    }
    return low - 1;
  }

  #top(index) {
    return index * this.#rowHeight + (this.#open >= 0 && index > this.#open ? this.#openHeight : 0);
  }

  /** The height of all rows. */
  get #height() {
    return this.#visible.length * this.#rowHeight + this.#openHeight;
  }

  /** How far one goes over the rows for each pixel that is scrolled: more than 1 where they would be too tall. */
  get #pace() {
    const { clientHeight } = this.scroller;
    return this.#height <= tallest ? 1 : (this.#height - clientHeight) / (tallest - clientHeight);
  }

  /** The height of the rows above what is in sight. */
  get #above() {
    return this.scroller.scrollTop * this.#pace;
  }

  #scrollTo(top) {
    this.scroller.scrollTop = top / this.#pace;
  }

  #reveal(index) {
    const top = this.#top(Math.max(0, index));
    const { clientHeight } = this.scroller;
    if (top < this.#above) this.#scrollTo(top);
    else if (top + this.#rowHeight > this.#above + clientHeight)
      this.#scrollTo(top + this.#rowHeight - clientHeight);
  }

  /** The nearest row in sight: only rows that are drawn can be reached by the keyboard. */
  #inSight(index) {
    const first = Math.max(0, Math.ceil((this.#above - this.#openHeight) / this.#rowHeight));
    const last = Math.floor((this.#above + this.scroller.clientHeight) / this.#rowHeight) - 1;
    return Math.max(0, Math.min(Math.max(index, first), last, this.#visible.length - 1));
  }

  #draw() {
    const { scrollTop, clientHeight } = this.scroller;
    const count = this.#visible.length;
    const above = this.#above;
    const first = Math.max(0, Math.floor((above - this.#openHeight) / this.#rowHeight) - overscan);
    const last = Math.min(count, Math.ceil((above + clientHeight) / this.#rowHeight) + overscan);
    if (!this.list.contains(document.activeElement)) this.#focused = this.#inSight(this.#focused);
    const drawn = new Map();
    for (let i = first; i < last; ++i) drawn.set(i, this.#drawnRow(i));
    for (const [index, { item }] of this.#drawn) if (drawn.get(index)?.item !== item) item.remove();
    this.#drawn = drawn;
    let before = null;
    for (const { item } of [...drawn.values()].reverse()) {
      if (item.parentNode !== this.list || item.nextSibling !== before) this.list.insertBefore(item, before);
      before = item;
    }
    const open = drawn.get(this.#open);
    if (open) this.#openHeight = open.item.lastChild.offsetHeight;
    else if (this.#open < 0) this.#openHeight = 0;
    for (const [index, { item }] of drawn) {
      item.style.top = `${this.#top(index) - above + scrollTop}px`;
      item.setAttribute("aria-setsize", count);
    }
    this.list.style.height = `${Math.min(this.#height, tallest)}px`;
  }

  /** A row's element: the one that is there, when it shows the same. */
  #drawnRow(index) {
    const row = this.#visible[index];
    const { moment, isNow } = this.#history;
    const end = this.#lines.endOf(row);
    const place =
      this.#lines.startOf(row) >= moment && !isNow ? "later" : !isNow && end >= moment ? "moment" : "";
    const facts = [row, end, index === this.#open, index === this.#focused, place];
    const last = this.#drawn.get(index);
    if (last && facts.every((fact, i) => fact === last.facts[i])) return last;
    const item = this.#row(index, ...facts);
    if (last?.item.contains(document.activeElement)) queueMicrotask(() => this.#focus());
    return { facts, item };
  }

  #row(index, row, end, isOpen, isFocused, place) {
    const lines = this.#lines.linesOf(row);
    const { from, to, text } = inWordsTogether(lines);
    const names = ["row", place, isBad(lines[0]) && "bad", isQuiet(lines[0]) && "quiet"].filter(Boolean);
    return element(
      "li",
      { className: names.join(" "), "data-kind": kindOf(lines[0]), "aria-posinset": index + 1 },
      button(
        [
          element("span", { className: "number" }, String(this.#lines.startOf(row) + 1)),
          element("span", { className: classOf(from) }, from),
          element("span", { className: "arrow", "aria-hidden": "true" }, to ? "→" : ""),
          element("span", { className: classOf(to) }, to),
          element("span", { className: "what" }, text),
        ],
        () => this.#toggle(index),
        { tabIndex: isFocused ? 0 : -1, "aria-expanded": String(isOpen), title: text },
      ),
      isOpen && this.#details(row, end, lines),
    );
  }

  #details(row, end, lines) {
    const before = this.#history.stateAfter(this.#lines.startOf(row));
    return element(
      "div",
      { className: "details" },
      element("p", {}, inWordsTogether(lines).text),
      details(lines, before, this.#history.stateAfter(end)),
      button("Show the phone as it was then", () => this.#history.lookAt(end)),
    );
  }

  #focus() {
    this.#drawn.get(this.#focused)?.item.firstChild.focus({ preventScroll: true });
  }

  #toggle(index) {
    this.#focused = index;
    this.#open = this.#open === index ? -1 : index;
    this.#draw();
    if (this.#open === index) this.#revealDetails(index);
    this.#focus();
  }

  #revealDetails(index) {
    const top = this.#top(index);
    const bottom = top + this.#rowHeight + this.#openHeight;
    const { clientHeight } = this.scroller;
    if (bottom > this.#above + clientHeight) this.#scrollTo(Math.min(top, bottom - clientHeight));
  }

  /** Up and down go from row to row, left and right from moment to moment. */
  #key(event) {
    const rows = { ArrowDown: 1, ArrowUp: -1, PageDown: 10, PageUp: -10, Home: -Infinity, End: Infinity };
    const moments = { ArrowLeft: -1, ArrowRight: 1 };
    if (!event.target.closest(".row > button")) return;
    if (event.key in moments) this.#history.lookAt(this.#history.moment + moments[event.key]);
    else if (event.key in rows) {
      this.#focused = Math.max(0, Math.min(this.#visible.length - 1, this.#focused + rows[event.key]));
      this.#reveal(this.#focused);
      this.#draw();
      this.#focus();
    } else return;
    event.preventDefault();
  }
}
