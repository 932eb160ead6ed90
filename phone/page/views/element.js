// Elements made in code. What comes from outside becomes text and never markup.

/**
 * An element. Among the properties functions are listeners, and names with a hyphen, "role" and "for" are
 * attributes; what is undefined is left out. So are children that are null, undefined or false.
 */
export function element(name, properties = {}, ...children) {
  const made = document.createElement(name);
  for (const [key, value] of Object.entries(properties)) {
    if (value === undefined) continue;
    if (typeof value === "function") made.addEventListener(key, value);
    else if (key.includes("-") || key === "role" || key === "for") made.setAttribute(key, value);
    else made[key] = value;
  }
  made.append(
    ...children.flat(3).filter((child) => child !== null && child !== undefined && child !== false),
  );
  return made;
}

export const button = (label, click, properties = {}) =>
  element("button", { type: "button", click, ...properties }, label);

/** A button that is on or off. */
export const toggle = (label, isOn, click, properties = {}) =>
  button(label, click, { "aria-pressed": String(isOn), ...properties });

/** Rows of names and values, as a description list. */
export const pairs = (rows) =>
  element(
    "dl",
    {},
    rows.map(([name, value]) => [element("dt", {}, name), element("dd", {}, value)]),
  );

/**
 * Fills an element anew when one of the facts that it shows is another one. The focus stays on the button
 * that does the same, or else nearby.
 */
export function refill(holder, facts, build) {
  if (holder.facts?.length === facts.length && facts.every((fact, i) => fact === holder.facts[i])) return;
  holder.facts = facts;
  const focused = holder.contains(document.activeElement) ? document.activeElement : null;
  const name = focused && (focused.getAttribute("aria-label") ?? focused.textContent);
  holder.replaceChildren(...[build()].flat(3).filter(Boolean));
  if (!focused) return;
  const all = [...holder.querySelectorAll("button:enabled, a, input")];
  const same = all.find((other) => (other.getAttribute("aria-label") ?? other.textContent) === name);
  (same ?? all[0] ?? holder.closest("[tabindex='-1']"))?.focus({ preventScroll: true });
}
