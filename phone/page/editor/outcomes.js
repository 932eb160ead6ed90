// What a payload will do, in words: one card for each situation that makes a difference.

import { element } from "../views/element.js";
import { shown } from "../state/json.js";

/** When a notification comes to the application: "foreground", "secondCall", "background" or "tap". */
function momentOf({ arrives, applicationState }) {
  if (arrives === "background" && applicationState !== "background") return "secondCall";
  return arrives ?? "background";
}

const titles = {
  foreground: "In the foreground",
  secondCall: "In the foreground, by the second call",
  background: "In the background",
  tap: "When it is tapped",
};

/** The value that all situations share, undefined where they don't. */
const common = (situations, key) =>
  situations.every((situation) => situation[key] === situations[0][key]) ? situations[0][key] : undefined;

function titleOf(situations) {
  const moment = momentOf(situations[0]);
  const isOn = common(situations, "foregroundSwitch");
  const state = common(situations, "applicationState");
  const isInFront = moment === "foreground" || moment === "secondCall";
  return [
    titles[moment],
    isOn !== undefined && `“show in the foreground” ${isOn ? "on" : "off"}`,
    isInFront && state !== undefined && `application ${state}`,
  ]
    .filter(Boolean)
    .join(", ");
}

function bySystemItself({ showsAlert, badge, playsSound }) {
  const effects = [
    showsAlert && "shows the notification",
    badge !== null && `sets the badge to ${badge}`,
    playsSound && "plays its sound",
  ].filter(Boolean);
  if (effects.length === 0) return "The system shows nothing.";
  return `The system by itself ${effects.join(", ").replace(/, ([^,]*)$/, " and $1")}.`;
}

/** What comes before the library has a say. */
const beforehand = {
  foreground: ({ presented, system }) => {
    if (!presented) return ["The system is not told to show it."];
    return [
      system.showsAlert
        ? "The system is told to show it."
        : "The system is told to show it, but it has no text.",
    ];
  },
  secondCall: () => [
    "The system also calls didReceiveRemoteNotification; if the host passes that on to the library:",
  ],
  background: ({ system, situations }) => [
    bySystemItself(system),
    situations[0].arrives
      ? "It wakes the application by didReceiveRemoteNotification; if the host passes that on to the library:"
      : "The library is not called before a tap, and on a tap it only handles a link.",
  ],
  tap: ({ system }) => [system.showsAlert ? "The application opens." : "There is nothing to tap."],
};

const ends = {
  "objectForKey:": "the library looked for a key in something that is not an object",
  "isEqualToString:": "the library compared something that is not a string with one",
  integerValue: "the library asked for a whole number, and got null, an array or an object",
};

function opening({ url, when, opens }) {
  const start = when === "onOK" ? "A tap on OK" : "A second later it";
  if (opens) return `${start} opens ${url}`;
  if (opens === null)
    return `${start} asks the system to open something that is not defined, since the link is not a string.`;
  if (url === null)
    return `${start} asks the system to open nil, since the text is not an address: nothing opens.`;
  return `${start} asks the system to open ${shown(url)}, which it can’t open.`;
}

const textIn = (value) => (typeof value === "string" ? value : value === null ? "" : shown(value));

function libraryDoes({ badge, alert, vibrates, stored, opened, raised }) {
  return [
    badge !== null && `The badge becomes ${badge}.`,
    alert && [
      `The library shows an alert (not in an application that has scenes):`,
      element(
        "span",
        { className: "little-alert" },
        element("strong", {}, textIn(alert.title)),
        " ",
        textIn(alert.message),
      ),
    ],
    vibrates && "The phone vibrates.",
    ...Object.entries(stored).map(([key, value]) => `Stored: ${key} = ${shown(value)}`),
    ...opened.map(opening),
    raised &&
      element(
        "strong",
        { className: "bad" },
        `The application ends, at ${raised} (${ends[raised] ?? "the settings can’t store null"}).`,
      ),
  ].filter(Boolean);
}

const isHeardOf = ({ situations, system }) =>
  situations[0].arrives !== null && (situations[0].arrives !== "tap" || system.showsAlert);

function reportOf({ reported, report }) {
  if (!reported) return null;
  return element(
    "details",
    {},
    element("summary", {}, "The application gets onReceiveNotification:"),
    element("pre", { tabIndex: 0 }, shown(report)),
  );
}

/** Whether it is what would happen to the phone as it is. */
const isNow = (situations, state) =>
  state.running &&
  situations.some(
    (situation) =>
      situation.arrives !== "tap" &&
      situation.applicationState === state.application.state &&
      situation.foregroundSwitch === state.host.foreground,
  );

function card(outcome, isCurrent) {
  const { situations, events, presented } = outcome;
  const isIdle = isHeardOf(outcome) && events.length === (presented ? 1 : 0);
  const lines = [
    ...beforehand[momentOf(situations[0])](outcome),
    ...libraryDoes(outcome),
    isIdle && "The library does nothing.",
  ];
  return element(
    "li",
    { className: isCurrent ? "outcome now" : "outcome" },
    element(
      "h3",
      {},
      titleOf(situations),
      isCurrent && element("span", { className: "tag" }, "as it is now"),
    ),
    lines.filter(Boolean).map((line) => element("p", {}, line)),
    reportOf(outcome),
  );
}

/** A card for each outcome of the linter's answer, those first that would come of the phone as it is. */
export function outcomeCards(outcomes, state) {
  const isCurrent = ({ situations }) => isNow(situations, state);
  const others = outcomes.filter((outcome) => !isCurrent(outcome));
  return [
    ...outcomes.filter(isCurrent).map((outcome) => card(outcome, true)),
    ...others.map((outcome) => card(outcome, false)),
  ];
}
