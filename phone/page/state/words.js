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

const said = (from, to, text) => ({ from, to, text: abridged(text) });

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

const arrivals = {
  foreground: ({ userInfo }) =>
    said(system, library, `a notification arrives in the foreground: ${notificationIn(userInfo)}`),
  background: ({ userInfo }) => said(system, host, `a notification arrives: ${notificationIn(userInfo)}`),
  tap: ({ userInfo, action }) =>
    said(
      user,
      library,
      `taps ${action ? `“${action}” of ` : ""}the notification ${notificationIn(userInfo)}`,
    ),
};

function authorization({ granted, error }) {
  const parts = [];
  if (granted !== undefined) parts.push(granted ? "yes, notifications may be shown" : "no, no notifications");
  if (error) parts.push(`requests for permission fail: ${error}`);
  if (error === null && granted === undefined) parts.push("requests for permission no longer fail");
  return said(user, system, parts.join("; "));
}

function store({ set = {}, remove = [] }) {
  const parts = [];
  if (Object.keys(set).length > 0) parts.push(`stores ${facts(set)}`);
  if (remove.length > 0) parts.push(`removes ${remove.join(", ")}`);
  return said(host, system, `another part of the application ${parts.join(" and ") || "stores nothing"}`);
}

const activation = new Map([
  [true, "YES"],
  [false, "NO"],
]);

const steps = {
  device: (step) => said(user, system, `the phone: ${facts(step)}`),
  application: (step) =>
    said(
      user,
      system,
      Object.keys(step).length === 2 && step.state ? states[step.state] : `the application: ${facts(step)}`,
    ),
  library: (step) => said(host, library, `the library’s bundle: ${facts(step)}`),
  store,
  host: (step) => said(host, library, facts(step) || "configures nothing"),
  registration: (step) => said(system, "", `the registration framework from now on: ${facts(step)}`),
  authorization,
  server: ({ answers }) =>
    said(server, "", `answers next: ${answers.map(answerInWords).join("; ") || "as before"}`),
  activate: ({ value }) => said(host, library, `activePushNotifications: ${activation.get(value) ?? value}`),
  deliverToken: ({ hex }) => said(system, host, `device token ${hex}`),
  call: ({ operation, hex, error }) =>
    said(host, library, [operation, hex ?? error].filter((part) => part !== undefined).join(" ")),
  notification: (step) => arrivals[step.arrives](step),
  deliver: ({ userInfo }) =>
    said(system, host, `a remote notification comes to the phone: ${notificationIn(userInfo)}`),
  tapOK: ({ alert }) => said(user, library, `taps OK on alert ${alert}`),
  settle: () => said(system, "", "runs everything that is due"),
  advance: ({ seconds }) => said(system, "", `time passes: ${counted(seconds, "second")}`),
  relaunch: () => said(user, system, "launches the application again"),
  show: () => said(user, system, "what is stored?"),
};

const events = {
  registerUser: ({ userType, version, hash }) =>
    said(
      library,
      system,
      `register this user and device: “${orNothing(userType)}”, version ${orNothing(version)}, hash ${orNothing(hash)}`,
    ),
  authorizationRequested: ({ options }) => said(library, system, `may we show ${optionsIn(options)}?`),
  registerForRemoteNotifications: () => said(library, system, "registerForRemoteNotifications"),
  callback: ({ selector, argument }) => said(library, host, `${selector} ${orNothing(argument)}`),
  log: ({ tag, message }) => said(library, system, `logs ${orNothing(tag)} ${orNothing(message)}`),
  stored: ({ key, value }) =>
    said(library, system, value === null ? `removes ${key}` : `stores ${key} = ${shown(value)}`),
  synchronized: () => said(library, system, "writes the user defaults to disk"),
  request: ({ task }) => said(library, server, `a request is on its way: ${orNothing(task)}`),
  received: ({ path, body }) => said(server, library, `has read POST ${path}: ${taskIn(body)}`),
  presented: ({ options }) =>
    said(
      library,
      system,
      Number(options) === 0 ? "don’t show the notification" : "show the notification",
    ),
  completed: ({ operation }) => said(library, system, `is done with ${operation}`),
  badge: ({ number }) => said(library, system, `badge ${number}`),
  vibrated: () => said(library, system, "vibrate"),
  alertShown: ({ alert, title, message }) =>
    said(
      library,
      user,
      `shows alert ${alert}: ${[title, message]
        .filter((text) => text !== null)
        .map(shown)
        .join(" – ")}`,
    ),
  alertHidden: ({ alert }) => said(library, system, `hides the window of alert ${alert}`),
  opened: ({ url }) => said(library, system, `open ${orNothing(url)}`),
  returned: ({ operation, value }) => said(library, host, `${operation} gives ${written(value)}`),
  raised: ({ selector }) =>
    said(system, host, `an exception: ${selector} is not understood. A real application ends here.`),
  settings: ({ values }) => said(system, user, `${counted(Object.keys(values).length, "value")} stored`),
};

const acts = {
  end: () => said(user, system, "ends the application"),
  airplaneMode: ({ on }) => said(user, system, `airplane mode ${on ? "on" : "off"}`),
  arrive: ({ userInfo }) => said(provider, system, `sends the notification ${notificationIn(userInfo)}`),
  remove: ({ notification }) => said(user, system, `removes notification ${notification} from the list`),
};

const screens = {
  prompt: () => said(system, user, "asks for permission"),
  listed: ({ notification, userInfo }) =>
    said(system, user, `lists notification ${notification}: ${notificationIn(userInfo)}`),
  banner: ({ notification, userInfo }) =>
    said(system, user, `shows notification ${notification} as a banner: ${notificationIn(userInfo)}`),
  unlisted: ({ notification }) => said(system, user, `notification ${notification} is no longer in the list`),
  badge: ({ number }) => said(system, user, `sets the badge to ${number}`),
  ended: ({ selector }) =>
    said(
      system,
      user,
      `the application has ended${selector === null ? "" : `: ${selector} is not understood`}`,
    ),
  oversized: ({ bytes, largest }) =>
    said(system, user, `${bytes} bytes: Apple’s service takes at most ${largest} of a notification`),
  stored: ({ values }) => said(system, user, `found on the phone: ${Object.keys(values).join(", ")}`),
  sent: () => said(system, server, "sends the request to a push server that runs elsewhere"),
  requestFailed: ({ reason }) => said(system, library, `the request failed: ${reason}`),
  settingsFailed: ({ reason }) => said(system, user, `the settings can’t be kept: ${reason}`),
  provider: ({ status, reason, pushType }) =>
    said(
      provider,
      system,
      `sends ${pushType ? `(${pushType})` : "a notification"}: ${status}${reason ? ` ${reason}` : ""}`,
    ),
};

const words = { do: steps, event: events, phone: acts, screen: screens };

/** {from, to, text}: who does what to whom; `to` may be empty. */
export function inWords(line) {
  const { kind, name } = nameOf(line);
  if (kind === null || !Object.hasOwn(words[kind], name)) return said(system, "", written(line));
  return words[kind][name](line);
}

/** The same for lines that are shown as one: a single line, or several "stored" events. */
export const inWordsTogether = (lines) =>
  lines.length === 1
    ? inWords(lines[0])
    : said(library, system, `stores ${lines.map(({ key }) => key).join(", ")}`);
