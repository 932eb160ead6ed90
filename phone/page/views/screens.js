// What fills the phone's screen: the application, the home screen, or the list of notifications.

import { button, element } from "./element.js";
import { textsOf } from "../state/fold.js";
import { shown } from "../state/json.js";
import { abridged } from "../state/words.js";

const morning = 9 * 60 * 60; // when the phone's clock starts, in seconds
const neighbours = 11; // icons of other applications

export function timeOf(clock) {
  const minutes = Math.floor((morning + clock / 1e9) / 60);
  const two = (number) => String(number).padStart(2, "0");
  return `${two(Math.floor(minutes / 60) % 24)}:${two(minutes % 60)}`;
}

const reports = {
  "onGetToken:": "The phone has a device token",
  "onRegisterToken:": "The push server knows this phone",
  "onUpdateToken:": "The push server knows the new token",
  "onReceiveNotification:": "A notification",
  "onError:": "An error",
};

const reported = 4; // the latest reports that fit

/** What one reads of a report: the texts of a notification, or the argument as it is. */
function reportText(argument) {
  const { title, body } = textsOf({ aps: argument });
  return [title, body].filter(Boolean).join(": ") || abridged(shown(argument));
}

function report({ selector, argument }) {
  return element(
    "li",
    { className: "report" },
    element("strong", {}, reports[selector] ?? selector),
    element("span", {}, reportText(argument)),
    element("code", {}, selector),
  );
}

const notice = (text) => element("p", { className: "notice" }, text);

function endedNotice({ ended }) {
  if (!ended) return null;
  if (ended.selector) {
    return notice(`The application has ended: it did not understand “${ended.selector}”.`);
  }
  return element("p", { className: "hint" }, "The application has been ended.");
}

function welcome(act) {
  return element(
    "div",
    { className: "welcome" },
    element("p", {}, "This application has the library inside. It has not switched notifications on yet."),
    button("Switch notifications on", () => act.register(), {
      id: "register",
      className: "primary",
      disabled: !act,
    }),
  );
}

/** The application in the foreground. */
export function application(state, act) {
  const isNew = state.told.length === 0 && state.code.activate === undefined;
  return element(
    "div",
    { className: "app" },
    element(
      "div",
      { className: "app-head" },
      element("span", { className: "app-icon small", "aria-hidden": "true" }),
      element("h2", {}, "Your application"),
      state.application.state === "inactive" && element("span", { className: "tag" }, "inactive"),
    ),
    state.raised && notice(`It did not understand “${state.raised}”: a real application ends here.`),
    isNew
      ? welcome(act)
      : element(
          "div",
          { className: "reports" },
          element("h3", {}, "What the library told it"),
          state.told.length === 0 && element("p", {}, "Nothing yet."),
          element("ul", { className: "plain" }, state.told.slice(-reported).reverse().map(report)),
        ),
  );
}

export function home(state, act) {
  const badge =
    state.badge > 0 &&
    element(
      "span",
      { className: "badge", role: "img", "aria-label": `badge ${state.badge}` },
      String(state.badge),
    );
  return element(
    "div",
    { className: "home-screen" },
    endedNotice(state),
    element(
      "div",
      { className: "icons" },
      Array.from({ length: neighbours }, () =>
        element("span", { className: "icon other", "aria-hidden": "true" }),
      ),
      button(
        [
          element("span", { className: "app-icon" }, badge),
          element("span", { className: "icon-name" }, "Your app"),
        ],
        () => act.open(),
        { className: "icon", disabled: !act },
      ),
    ),
  );
}

/** The lock screen, with the notifications that the system shows. */
export function list(state, act, notifications) {
  return element(
    "div",
    { className: "list-screen" },
    element("div", { className: "big-clock", "aria-hidden": "true" }, timeOf(state.clock)),
    endedNotice(state),
    notifications.show(state.list, act),
  );
}
