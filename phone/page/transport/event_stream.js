// Server-sent events, read from an answer's body: unlike EventSource, fetch can send a key along.

function message(block) {
  const fields = {};
  for (const line of block.split("\n")) {
    const colon = line.indexOf(":");
    if (colon > 0) fields[line.slice(0, colon)] = line.slice(colon + (line[colon + 1] === " " ? 2 : 1));
  }
  return fields;
}

/** The messages, each an object of its fields, in the batches in which they come. */
export async function* messages(body) {
  const reader = body.pipeThrough(new TextDecoderStream()).getReader();
  let rest = "";
  try {
    for (;;) {
      const { value, done } = await reader.read();
      if (done) return;
      const blocks = (rest + value).split("\n\n");
      rest = blocks.pop();
      yield blocks.map(message);
    }
  } finally {
    reader.cancel().catch(() => {}); // who stops listening hangs up
  }
}
