// Long work in short turns, between which the browser draws and listens.

const longest = 30; // milliseconds
let begun = performance.now();

/** To be awaited now and then: lets the browser have its turn once this one has lasted long enough. */
export async function breath() {
  if (performance.now() - begun < longest) return;
  await new Promise((done) => setTimeout(done));
  begun = performance.now();
}
