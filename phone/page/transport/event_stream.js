// Server-sent events, read from an answer's body: unlike EventSource, fetch can send a key along.

function message(block) {
  const fields = block.split("\n").filter((line) => line !== "" && !line.startsWith(":"));
  return Object.fromEntries(fields.map((line) => line.split(/: ?(.*)/s, 2)));
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
