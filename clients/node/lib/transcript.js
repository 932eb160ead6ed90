// A phone's lines as a person reads them.

const LONGEST_VALUE = 120;
const KINDS = { do: 'step', phone: 'act', event: 'event', screen: 'screen' };

/** One row for each of the interface's entries: number, kind, name, and what else the line has. */
export function readable(entries) {
  return entries.map(({ id, line }) => row(id, line)).join('\n');
}

function row(number, line) {
  const kind = Object.keys(KINDS).find((name) => name in line) ?? '';
  const words = [`${String(number).padStart(6)}  ${(KINDS[kind] ?? '?').padEnd(6)}`, line[kind] ?? ''];
  for (const [name, value] of Object.entries(line)) {
    if (name !== kind) words.push(`${name}=${abridged(value)}`);
  }
  return words.join(' ');
}

function abridged(value) {
  const text = JSON.stringify(value);
  return text.length <= LONGEST_VALUE ? text : `${text.slice(0, LONGEST_VALUE)}…`;
}
