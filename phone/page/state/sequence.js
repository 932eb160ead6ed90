// A list that grows at its end and may lose any of its members. What one becomes shares with what it was all that
// did not change, so that keeping many of them costs little, however long they are.

const bits = 4;
const width = 1 << bits; // slots of a node: its members by their numbers' last bits, or nodes of them

const countIn = (slot, level) => (slot === undefined ? 0 : level === 0 ? 1 : slot.count);

/** The node with another value for a number; undefined takes the number out. */
function changed(node, level, number, value) {
  const slots = node ? [...node.slots] : Array(width).fill(undefined);
  const at = Math.floor(number / width ** level) % width;
  slots[at] = level === 0 ? value : changed(slots[at], level - 1, number, value);
  const count = slots.reduce((sum, slot) => sum + countIn(slot, level), 0);
  return count === 0 ? undefined : { count, slots };
}

export class Sequence {
  /** Empty. */
  constructor(root, level = 0, next = 0) {
    this.root = root;
    this.level = level;
    this.next = next; // larger than any number so far
    Object.freeze(this);
  }

  get length() {
    return this.root?.count ?? 0;
  }

  /** With one more member, or another one of this number; members are in the order of their numbers, from 0 on. */
  with(number, value) {
    let { root, level } = this;
    for (; number >= width ** (level + 1); level += 1) {
      root = root && { count: root.count, slots: [root, ...Array(width - 1).fill(undefined)] };
    }
    return new Sequence(changed(root, level, number, value), level, Math.max(this.next, number + 1));
  }

  /** With one more member at the end. */
  append(value) {
    return this.with(this.next, value);
  }

  /** Without the member of this number. */
  without(number) {
    if (number >= width ** (this.level + 1)) return this;
    return new Sequence(changed(this.root, this.level, number, undefined), this.level, this.next);
  }

  withoutFirst() {
    let number = 0;
    let slot = this.root;
    for (let { level } = this; slot !== undefined && level >= 0; level -= 1) {
      const at = slot.slots.findIndex((one) => one !== undefined);
      number = number * width + at;
      slot = slot.slots[at];
    }
    return this.without(number);
  }

  /** The member at a place, from 0 on; from the end when it is negative. */
  at(index) {
    let place = index < 0 ? this.length + index : index;
    if (place < 0 || place >= this.length) return undefined;
    let slot = this.root;
    for (let level = this.level; level >= 0; level -= 1) {
      slot = slot.slots.find((one) => {
        const count = countIn(one, level);
        if (place < count) return true;
        place -= count;
        return false;
      });
    }
    return slot;
  }

  /** The members from one place to before another, both counted from the end when they are negative. */
  slice(from = 0, to = this.length) {
    const [first, end] = [from, to].map((place) => Math.max(0, place < 0 ? this.length + place : place));
    const count = Math.max(0, Math.min(end, this.length) - first);
    return Array.from({ length: count }, (_, i) => this.at(first + i));
  }

  *[Symbol.iterator]() {
    yield* this.slice();
  }
}
