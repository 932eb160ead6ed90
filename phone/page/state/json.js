// JSON with its numbers as they were written: what the phone prints as 1.0 is a real, 1 is a whole number,
// and a whole number may have more digits than a number of this language holds.

/** A number whose text the language's own number would not give back. */
class Numeral {
  constructor(text) {
    this.text = text;
    Object.freeze(this);
  }

  valueOf() {
    return Number(this.text);
  }

  toString() {
    return this.text;
  }

  /** So that JSON.stringify writes it as it was. */
  toJSON() {
    return JSON.rawJSON(this.text);
  }
}

/**
 * Reads JSON. A number is one that counts as a number and whose text is the one that was read, as far as the
 * browser tells it.
 */
export function parse(text) {
  const value = JSON.parse(text);
  // Almost always all is as it was written, and to look at each number takes several times as long.
  if (JSON.stringify(value) === text) return value;
  return JSON.parse(text, (key, part, context) =>
    typeof part === "number" && context && String(part) !== context.source
      ? new Numeral(context.source)
      : part,
  );
}

function byCodePoint(one, other) {
  let at = 0;
  while (at < one.length && one[at] === other[at]) at += 1;
  return (one.codePointAt(at) ?? -1) - (other.codePointAt(at) ?? -1);
}

/** A value as the phone writes it: compact, with its keys in order. */
export function written(value) {
  if (value instanceof Numeral) return value.text;
  if (typeof value !== "object" || value === null) return JSON.stringify(value);
  if (Symbol.iterator in value) return `[${Array.from(value, written).join(",")}]`;
  const keys = Object.keys(value).sort(byCodePoint);
  return `{${keys.map((key) => `${JSON.stringify(key)}:${written(value[key])}`).join(",")}}`;
}

/** A value for people: a text as it is, anything else as it is written. */
export const shown = (value) => (typeof value === "string" ? value : written(value));
