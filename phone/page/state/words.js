// A line of a transcript in plain words: who did what to whom.

import { nameOf, textsOf } from "./fold.js";
import { shown, written } from "./json.js";
import { answerInWords, fields } from "./request.js";

const host = "Host";
const library = "Library";
const system = "System";
const server = "Push server";
const user = "User";
const provider = "Provider";

/** Who can do something. */
export const actors = [host, library, system, server, user, provider];

/** Shortens long runs of hexadecimal digits, such as tokens, to their first and last ones. */
export const abridged = (text) =>
  text.replace(/[0-9a-f]{25,}/g, (digits) => `${digits.slice(0, 10)}…${digits.slice(-10)}`);

const orNothing = (value) => (value === null ? "nothing" : shown(value));
const counted = (number, noun) => `${number} ${noun}${number === 1 ? "" : "s"}`;

/** "name = value, …" of the keys that a step gives. */
const facts = (step) =>
  Object.entries(step)
    .filter(([key]) => key !== "do")
    .map(([key, value]) => `${key} = ${written(value)}`)
    .join(", ");

/** A notification by what it says, or as it is when it says nothing. */
function notificationIn(userInfo) {
  const texts = Object.values(textsOf(userInfo)).filter(Boolean);
  return texts.length > 0 ? `“${texts.join(" – ")}”` : written(userInfo);
}

const taskIn = (body) => fields(body).find(([name]) => name === "tarea")?.[1] ?? "a request";

const together = new Intl.ListFormat("en-GB");

/** What an option's bits stand for, as Apple documents them. */
const optionsIn = (options) =>
  together.format(["badge", "sound", "alert"].filter((_, bit) => Number(options) & (1 << bit))) || "nothing";

const states = {
  active: "brings the application to the front",
  inactive: "makes the application inactive",
  background: "sends the application to the background",
};

// [from, to, what the one does, as a function of the line]

const arrivals = {
  foreground: [
    system,
    library,
    ({ userInfo }) => `a notification arrives in the foreground: ${notificationIn(userInfo)}`,
  ],
  background: [system, host, ({ userInfo }) => `a notification arrives: ${notificationIn(userInfo)}`],
  tap: [
    user,
    library,
    ({ userInfo, action }) =>
      `taps ${action ? `“${action}” of ` : ""}the notification ${notificationIn(userInfo)}`,
  ],
};

function answerTo({ granted, error }) {
  const parts = [];
  if (granted !== undefined) parts.push(granted ? "yes, notifications may be shown" : "no, no notifications");
  if (error) parts.push(`requests for permission fail: ${error}`);
  if (error === null && granted === undefined) parts.push("requests for permission no longer fail");
  return parts.join("; ");
}

function storing({ set = {}, remove = [] }) {
  const parts = [];
  if (Object.keys(set).length > 0) parts.push(`stores ${facts(set)}`);
  if (remove.length > 0) parts.push(`removes ${remove.join(", ")}`);
  return `another part of the application ${parts.join(" and ") || "stores nothing"}`;
}

const activation = new Map([
  [true, "YES"],
  [false, "NO"],
]);

const steps = {
  device: [user, system, (step) => `the phone: ${facts(step)}`],
  application: [
    user,
    system,
    (step) =>
      Object.keys(step).length === 2 && step.state ? states[step.state] : `the application: ${facts(step)}`,
  ],
  library: [host, library, (step) => `the library’s bundle: ${facts(step)}`],
  store: [host, system, storing],
  host: [host, library, (step) => facts(step) || "configures nothing"],
  registration: [system, "", (step) => `the registration framework from now on: ${facts(step)}`],
  authorization: [user, system, answerTo],
  server: [
    server,
    "",
    ({ answers }) => `answers next: ${answers.map(answerInWords).join("; ") || "as before"}`,
  ],
  activate: [host, library, ({ value }) => `activePushNotifications: ${activation.get(value) ?? value}`],
  deliverToken: [system, host, ({ hex }) => `device token ${hex}`],
  call: [
    host,
    library,
    ({ operation, hex, error }) => [operation, hex ?? error].filter((part) => part !== undefined).join(" "),
  ],
  deliver: [
    system,
    host,
    ({ userInfo }) => `a remote notification comes to the phone: ${notificationIn(userInfo)}`,
  ],
  tapOK: [user, library, ({ alert }) => `taps OK on alert ${alert}`],
  settle: [system, "", () => "runs everything that is due"],
  advance: [system, "", ({ seconds }) => `time passes: ${counted(seconds, "second")}`],
  relaunch: [user, system, () => "launches the application again"],
  show: [user, system, () => "what is stored?"],
};

const events = {
  registerUser: [
    library,
    system,
    ({ userType, version, hash }) =>
      `register this user and device: “${orNothing(userType)}”, version ${orNothing(version)}, hash ${orNothing(hash)}`,
  ],
  authorizationRequested: [library, system, ({ options }) => `may we show ${optionsIn(options)}?`],
  registerForRemoteNotifications: [library, system, () => "registerForRemoteNotifications"],
  callback: [library, host, ({ selector, argument }) => `${selector} ${orNothing(argument)}`],
  log: [library, system, ({ tag, message }) => `logs ${orNothing(tag)} ${orNothing(message)}`],
  stored: [
    library,
    system,
    ({ key, value }) => (value === null ? `removes ${key}` : `stores ${key} = ${shown(value)}`),
  ],
  synchronized: [library, system, () => "writes the user defaults to disk"],
  request: [library, server, ({ task }) => `a request is on its way: ${orNothing(task)}`],
  received: [server, library, ({ path, body }) => `has read POST ${path}: ${taskIn(body)}`],
  presented: [
    library,
    system,
    ({ options }) => (Number(options) === 0 ? "don’t show the notification" : "show the notification"),
  ],
  completed: [library, system, ({ operation }) => `is done with ${operation}`],
  badge: [library, system, ({ number }) => `badge ${number}`],
  vibrated: [library, system, () => "vibrate"],
  alertShown: [
    library,
    user,
    ({ alert, title, message }) =>
      `shows alert ${alert}: ${[title, message]
        .filter((text) => text !== null)
        .map(shown)
        .join(" – ")}`,
  ],
  alertHidden: [library, system, ({ alert }) => `hides the window of alert ${alert}`],
  opened: [library, system, ({ url }) => `open ${orNothing(url)}`],
  returned: [library, host, ({ operation, value }) => `${operation} gives ${written(value)}`],
  raised: [
    system,
    host,
    ({ selector }) => `an exception: ${selector} is not understood. A real application ends here.`,
  ],
  settings: [system, user, ({ values }) => `${counted(Object.keys(values).length, "value")} stored`],
};

const acts = {
  end: [user, system, () => "ends the application"],
  airplaneMode: [user, system, ({ on }) => `airplane mode ${on ? "on" : "off"}`],
  arrive: [provider, system, ({ userInfo }) => `sends the notification ${notificationIn(userInfo)}`],
  remove: [user, system, ({ notification }) => `removes notification ${notification} from the list`],
  tap: [user, system, ({ notification }) => `taps notification ${notification} in the list`],
  uninstall: [user, system, () => "removes the application"],
  install: [user, system, () => "installs the application"],
};

const screens = {
  prompt: [system, user, () => "asks for permission"],
  listed: [
    system,
    user,
    ({ notification, userInfo }) => `lists notification ${notification}: ${notificationIn(userInfo)}`,
  ],
  banner: [
    system,
    user,
    ({ notification, userInfo }) =>
      `shows notification ${notification} as a banner: ${notificationIn(userInfo)}`,
  ],
  unlisted: [system, user, ({ notification }) => `notification ${notification} is no longer in the list`],
  badge: [system, user, ({ number }) => `sets the badge to ${number}`],
  goesOn: [system, user, () => "the application goes on, as only a scenario lets it"],
  ended: [
    system,
    user,
    ({ selector }) =>
      `the application has ended${selector === null ? "" : `: ${selector} is not understood`}`,
  ],
  oversized: [
    system,
    user,
    ({ bytes, largest }) => `${bytes} bytes: Apple’s service takes at most ${largest} of a notification`,
  ],
  stored: [system, user, ({ values }) => `found on the phone: ${Object.keys(values).join(", ")}`],
  sent: [system, server, () => "sends the request to a push server that runs elsewhere"],
  requestFailed: [system, library, ({ reason }) => `the request failed: ${reason}`],
  settingsFailed: [system, user, ({ reason }) => `the settings can’t be kept: ${reason}`],
  provider: [
    provider,
    system,
    ({ status, reason, pushType }) =>
      `sends ${pushType ? `(${pushType})` : "a notification"}: ${status}${reason ? ` ${reason}` : ""}`,
  ],
};

const words = { do: steps, event: events, phone: acts, screen: screens };
const asItStands = [system, "", written];

/** [from, to, a function of the line that gives the text]. */
function sentenceOf(line) {
  if (line.do === "notification") return arrivals[line.arrives];
  const { kind, name } = nameOf(line);
  return kind !== null && Object.hasOwn(words[kind], name) ? words[kind][name] : asItStands;
}

/** Who does it. */
export const actorOf = (line) => sentenceOf(line)[0];

/** {from, to, text}: who does what to whom; `to` may be empty. */
export function inWords(line) {
  const [from, to, text] = sentenceOf(line);
  return { from, to, text: abridged(text(line)) };
}

/** The same for lines that are shown as one: a single line, or several "stored" events. */
export const inWordsTogether = (lines) =>
  lines.length === 1
    ? inWords(lines[0])
    : { ...inWords(lines[0]), text: abridged(`stores ${lines.map(({ key }) => key).join(", ")}`) };
