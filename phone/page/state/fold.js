// What a phone is like, as a pure function of the lines of its transcript: a line makes a new state of the
// last one and shares with it what did not change. All that the page shows of a phone comes from here.

import { Sequence } from "./sequence.js";

const remembered = 50; // of what only grows; the lines themselves have all of it

const callbacks = ["onGetToken:", "onReceiveNotification:", "onRegisterToken:", "onUpdateToken:", "onError:"];

const host = { appHash: null, foreground: false, deactivateGPS: false, delegate: callbacks };

const noEntries = new Sequence();

/** A fresh phone. */
export const start = {
  running: true,
  application: { state: "active", version: "1.0", canOpenURL: true },
  device: {
    systemVersion: "17.0",
    name: "iPhone",
    model: "iPhone",
    country: "US",
    languages: ["en"],
    token: Array.from({ length: 32 }, (_, byte) => byte.toString(16).padStart(2, "0")).join(""),
    tokenError: "",
  },
  library: { version: "1.0", loaded: true },
  registration: { finishes: true, stores: {} },
  authorization: { granted: true, error: null, isDecided: false },
  host, // how the library is configured
  code: {}, // what the host's code did since the launch: its configuration and, once it activated, "activate"
  server: {
    answers: new Sequence(), // queued
    waiting: new Sequence(), // requests that the library has handed over, and whose turn has not come
    // {body, answer, failure, isElsewhere} of the last one that was read, or sent to a server that runs elsewhere;
    // a null answer is the server's own
    last: null,
  },
  isRegistering: false, // the registration framework is to report
  settings: {},
  clock: 0, // nanoseconds, which the phone counts, too: sums of seconds come short of a minute
  airplane: false,
  badge: 0,
  vibrated: false, // by what was done last
  alerts: new Sequence(), // on the screen, the uppermost last
  card: null, // {url} while the address that was opened last is what one sees
  banner: null, // an entry of the list
  list: noEntries, // {notification, userInfo} of what the system lists
  seen: noEntries, // the list as it was when the application last changed its state or ended
  prompt: false, // whether the system asks for permission
  opened: [], // addresses, the latest last
  told: [], // {selector, argument} of what the host was told in this launch, the latest last
  log: [], // {tag, message}, the latest last
  raised: null, // the selector that was not understood in this launch
  ended: null, // {selector, alerts} once the application has ended: of what, and what it had on the screen
};

const kinds = ["do", "event", "phone", "screen"];

/** {kind, name}: what kind of line it is, and which of these. */
export function nameOf(line) {
  const kind = kinds.find((key) => key in line) ?? null;
  return { kind, name: kind && line[kind] };
}

const textIn = (...values) => values.find((value) => typeof value === "string" && value !== "") ?? "";

/**
 * {title, subtitle, body} of a notification, each empty when it has none. Where the application's own files have
 * the text, it is the text's key.
 */
export function textsOf(userInfo) {
  const alert = userInfo?.aps?.alert;
  if (typeof alert === "string") return { title: "", subtitle: "", body: alert };
  return {
    title: textIn(alert?.title, alert?.["title-loc-key"]),
    subtitle: textIn(alert?.subtitle, alert?.["subtitle-loc-key"]),
    body: textIn(alert?.body, alert?.["loc-key"]),
  };
}

const latest = (items, item) => [...items, item].slice(-remembered);

const without = (object, keys) =>
  Object.fromEntries(Object.entries(object).filter(([key]) => !keys.includes(key)));

/** A step's own keys, for what it sets by these names. */
const facts = (step) => without(step, ["do"]);

/** What settling does without an event: the registration framework stores just before it reports. */
function settle({ isRegistering, registration, settings }) {
  if (!isRegistering) return null;
  const isDone = registration.finishes;
  return { isRegistering: false, settings: isDone ? { ...settings, ...registration.stores } : settings };
}

/** What is done to the application. */
const steps = {
  device: ({ device }, step) => ({ device: { ...device, ...facts(step) } }),
  application: ({ application, list }, step) => ({
    application: { ...application, ...facts(step) },
    ...("state" in step ? { banner: null, card: null, seen: list } : null),
  }),
  library: ({ library }, step) => ({ library: { ...library, ...facts(step) } }),
  registration: ({ registration }, step) => ({ registration: { ...registration, ...facts(step) } }),
  authorization: ({ authorization }, step) => ({
    authorization: { ...authorization, ...facts(step), isDecided: true },
    prompt: false,
  }),
  host: (state, step) => ({
    host: { ...state.host, ...facts(step) },
    code: { ...state.code, ...facts(step) },
  }),
  activate: ({ code }, { value }) => ({ code: { ...code, activate: value } }),
  store: ({ settings }, { set = {}, remove = [] }) => ({
    settings: without({ ...settings, ...set }, remove),
  }),
  server: ({ server }, { answers }) => ({
    server: { ...server, answers: answers.reduce((all, answer) => all.append(answer), server.answers) },
  }),
  settle,
  advance: (state, { seconds }) => {
    const duration = Math.round(Number(seconds) * 1e9);
    return { ...settle(state), clock: state.clock + duration, banner: null };
  },
  relaunch: ({ server }) => ({
    running: true,
    host,
    code: {},
    server: { ...server, waiting: new Sequence() },
    isRegistering: false,
    alerts: new Sequence(),
    card: null,
    banner: null,
    told: [],
    raised: null,
    ended: null,
  }),
};

/** What then happened. */
const events = {
  registerUser: () => ({ isRegistering: true }),
  authorizationRequested: ({ authorization }) => ({ authorization: { ...authorization, isDecided: true } }),
  callback: ({ told }, { selector, argument }) => ({ told: latest(told, { selector, argument }) }),
  log: ({ log }, { tag, message }) => ({ log: latest(log, { tag, message }) }),
  stored: ({ settings }, { key, value }) => ({
    settings: value === null ? without(settings, [key]) : { ...settings, [key]: value },
  }),
  settings: (_, { values }) => ({ settings: values }),
  request: ({ server }, { task, url, body }) => ({
    server: { ...server, waiting: server.waiting.append({ task, url, body }) },
  }),
  received: ({ server: { answers, waiting } }, { body }) => ({
    server: {
      answers: answers.withoutFirst(),
      waiting: waiting.withoutFirst(),
      last: { body, answer: answers.at(0) ?? null, failure: null, isElsewhere: false },
    },
  }),
  badge: (_, { number }) => ({ badge: number }),
  vibrated: () => ({ vibrated: true }),
  alertShown: ({ alerts }, { alert, title, message, buttons }) => ({
    alerts: alerts.with(alert, { alert, title, message, buttons }),
    card: null,
  }),
  alertHidden: ({ alerts }, { alert }) => ({ alerts: alerts.without(alert) }),
  opened: ({ opened }, { url }) => ({ opened: latest(opened, url), card: { url } }),
  raised: (_, { selector }) => ({ raised: selector }),
};

/** What somebody does to the phone around the application. */
const acts = {
  airplaneMode: (_, { on }) => ({ airplane: on }),
  uninstall: () => ({ authorization: start.authorization }),
};

const isUnread = (answer) => answer?.fault === "refuse" || answer?.fault === "untrusted";
const failsWhenRead = (answer) => answer !== null && !(answer.status >= 200 && answer.status <= 299);

/** Either the server has read the request and answered so that it fails, or the request never reached it. */
function requestFailed({ server, airplane }, { reason }) {
  const { answers, waiting, last } = server;
  const mayFail = last !== null && (last.isElsewhere ? !airplane : failsWhenRead(last.answer));
  const wasRead = mayFail && last.failure === null;
  if (wasRead) return { server: { ...server, last: { ...last, failure: reason } } };
  const isTaken = !airplane && isUnread(answers.at(0));
  return {
    server: { answers: isTaken ? answers.withoutFirst() : answers, waiting: waiting.withoutFirst(), last },
  };
}

const entryOf = ({ notification, userInfo }) => ({ notification, userInfo });

/** What the system then shows by itself. */
const screens = {
  prompt: ({ authorization }) => ({
    authorization: { ...authorization, isDecided: false }, // until a person answers
    prompt: true,
  }),
  listed: ({ list }, line) => ({ list: list.with(line.notification, entryOf(line)) }),
  banner: ({ list }, line) => {
    const banner = entryOf(line);
    return { list: list.with(line.notification, banner), banner, card: null };
  },
  unlisted: ({ list, banner }, { notification }) => ({
    list: list.without(notification),
    banner: banner?.notification === notification ? null : banner,
  }),
  badge: (_, { number }) => ({ badge: number }),
  stored: (_, { values }) => ({ settings: values }),
  sent: ({ server }) => ({
    server: {
      ...server,
      waiting: server.waiting.withoutFirst(),
      last: { body: server.waiting.at(0)?.body ?? "", answer: null, failure: null, isElsewhere: true },
    },
  }),
  requestFailed,
  goesOn: ({ ended, alerts }) => ({ running: true, ended: null, alerts: ended?.alerts ?? alerts }),
  ended: ({ alerts, list }, { selector }) => ({
    running: false,
    seen: list,
    ended: { selector, alerts },
    alerts: new Sequence(),
    banner: null,
    card: null,
  }),
};

const changes = { do: steps, event: events, phone: acts, screen: screens };

/** What each step or act does before its own. */
const begun = (state, name) => (state.vibrated && name !== "settle" ? { ...state, vibrated: false } : state);

/** The phone after one more line. What it does not know changes nothing. */
export function after(state, line) {
  const { kind, name } = nameOf(line);
  const before = kind === "do" || kind === "phone" ? begun(state, name) : state;
  if (kind === null || !Object.hasOwn(changes[kind], name)) return before;
  return { ...before, ...changes[kind][name](before, line) };
}
