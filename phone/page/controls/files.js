// Files: saved, chosen, and dropped on a part of the page.

import { button, element } from "../views/element.js";

/** Hands a text to the browser as a file to keep. */
export function save(text, name, type) {
  const url = URL.createObjectURL(new Blob([text], { type }));
  element("a", { href: url, download: name }).click();
  setTimeout(() => URL.revokeObjectURL(url), 1000);
}

/** The file's text with a byte order mark, if it has one: the linter has something to say about that. */
const textOf = async (file) =>
  new TextDecoder("utf-8", { ignoreBOM: true }).decode(await file.arrayBuffer());

/** A button that has a file chosen; `opened` gets its text and its name. */
export function openButton(label, accept, opened, properties = {}) {
  const input = element("input", {
    type: "file",
    accept,
    hidden: true,
    tabIndex: -1,
    "aria-label": label,
    change: async () => {
      const [file] = input.files;
      input.value = "";
      if (file) opened(await textOf(file), file.name);
    },
  });
  return [button(label, () => input.click(), properties), input];
}

/** Takes the files that are dropped on an element, and lets it show that it would. */
export function takeDropped(target, opened) {
  const isFile = (event) => [...event.dataTransfer.types].includes("Files");
  const mark = (event, isOver) => {
    if (!isFile(event)) return;
    event.preventDefault();
    event.stopPropagation();
    target.classList.toggle("drop-target", isOver);
  };
  target.addEventListener("dragover", (event) => mark(event, true));
  target.addEventListener("dragleave", (event) => mark(event, false));
  target.addEventListener("drop", async (event) => {
    mark(event, false);
    const [file] = event.dataTransfer.files;
    if (file) opened(await textOf(file), file.name);
  });
}
