// The live page.

import { Actions } from "./controls/actions.js";
import { ApplicationControls } from "./controls/application_controls.js";
import { Connection } from "./views/connection.js";
import { Editor } from "./editor/editor.js";
import {
  answerPrompt,
  arrives,
  register,
  takeOff,
  tap,
  tapOK,
  toBackground,
  toFront,
} from "./controls/gestures.js";
import { History } from "./state/history.js";
import { takeKey } from "./transport/key.js";
import { Message } from "./views/message.js";
import { Panels } from "./controls/panels.js";
import { sessionControls } from "./controls/session.js";
import { Transport } from "./transport/transport.js";
import { Announcer } from "./views/announcer.js";
import { Places } from "./controls/places.js";
import { show } from "./views/view.js";

const at = (id) => document.getElementById(id);

const transport = new Transport(takeKey());
const history = new History();
const message = new Message(at("message"));
const connection = new Connection(at("connection"));
const actions = new Actions(transport, history, message);

const application = new ApplicationControls(at("application"), actions);

let editor = null;
const announcer = new Announcer(at("said"), history);
const places = new Places(at("places"), () => editor?.refresh());

const told = {
  tap: (entry) => actions.play(tap(entry)),
  takeOff: (number) => actions.play(takeOff(number)),
  ok: (alert) => actions.play(tapOK(alert)),
  answer: (granted) => actions.play(answerPrompt(granted)),
  home: () => actions.play(toBackground),
  open: () => actions.play(toFront),
  register: () => actions.play(register),
};

let panels = null;
let drawn = null; // the phone that the panels show

function draw() {
  announcer.update();
  places.update(history.length);
  if (history.isReading) return;
  application.update(history.state, history.isNow);
  const phone = history.last;
  if (!panels || phone === drawn) return;
  drawn = phone;
  panels.update(phone);
}

function makeEditor() {
  return new Editor({
    judge: (text) => transport.lint(text),
    arrives: (text) => {
      places.go("device"); // where it is seen, in a narrow window
      actions.play(arrives(text));
    },
  });
}

async function greet() {
  if (!panels) {
    const { steps } = await transport.schema();
    editor = makeEditor();
    panels = new Panels(at("panels"), steps, editor, transport, actions, message);
    draw();
  }
  panels.showStatus(await transport.status());
}

show(history, told, draw);
sessionControls(at("session"), transport, actions, history, message);
transport.follow({
  fresh: (awaited) => history.clear(awaited),
  end: (texts) => history.showEnd(texts),
  lines: (texts) => texts.length > 0 && history.append(texts),
  connection: (state, reason) => {
    connection.show(state, reason);
    if (state === "open") actions.attempt(greet);
  },
});
