// A saved page: the lines are in the document itself.

import { History } from "./state/history.js";
import { breath } from "./state/turns.js";
import { show } from "./views/view.js";

const together = 500; // lines
const endLength = 200;

async function read(history, texts) {
  history.clear(texts.length);
  history.showEnd(texts.slice(-endLength));
  for (let at = 0; at < texts.length; at += together) {
    history.append(texts.slice(at, at + together));
    await breath();
  }
}

const history = new History();
show(history);
read(history, document.getElementById("lines").textContent.split("\n").filter(Boolean));
