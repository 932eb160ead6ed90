// Draws the phone: a state of the fold, and nothing else. What is tapped on it is told to whoever made it.

import { button, element, refill } from "./element.js";
import { notification } from "./notification.js";
import { NotificationList } from "./notification_list.js";
import { alert, opened, prompt } from "./overlays.js";
import { application, home, list, timeOf } from "./screens.js";

const screens = { application, home, list };

const none = [];
const mostAlerts = 8; // that are drawn; no more of them can be told apart
const isInFront = ({ running, application: { state } }) => running && state !== "background";

/** Whether the list has changed since the application was last in the foreground. */
const hasNews = ({ list: entries, seen }) => entries !== seen && entries.length > 0;

const bars = () => [1, 2, 3, 4].map(() => element("i"));

export class PhoneView {
  #told;
  #sheet = null; // the screen that somebody chose; else the one that suits the state
  #state = null;
  #isNow = true;

  /**
   * `told` has a function for each gesture: tap, takeOff, ok, answer, home, open, register. Without it the
   * phone can be looked at only.
   */
  constructor(root, told) {
    this.#told = told;
    const names = ["status", "screen", "banner", "card", "alerts", "prompt", "home"];
    this.parts = Object.fromEntries(names.map((name) => [name, element("div", { className: name })]));
    for (const name of ["alerts", "prompt"]) this.parts[name].setAttribute("aria-live", "assertive");
    this.body = element(
      "div",
      { className: "phone", role: "group", tabIndex: -1, "aria-label": "The phone’s screen" },
      element("div", { className: "glass" }, Object.values(this.parts)),
    );
    this.notifications = new NotificationList(this.parts.screen);
    root.append(this.body);
  }

  draw(state, isNow) {
    if (this.#isElsewhere(state)) this.#sheet = null;
    this.#state = state;
    this.#isNow = isNow;
    const hadFocus = this.body.contains(document.activeElement);
    const act = isNow ? this.#told : undefined;
    const screen = this.#screen();
    this.body.dataset.screen = screen;
    this.body.classList.toggle("vibrating", state.vibrated);
    const { parts } = this;
    refill(
      parts.status,
      [timeOf(state.clock), state.airplane, state.list.length, state.vibrated, screen],
      () => this.#status(state),
    );
    refill(
      parts.screen,
      [
        screen,
        act,
        state.list,
        state.told,
        state.code,
        state.badge,
        state.application,
        state.running,
        state.ended,
        state.raised,
        timeOf(state.clock),
      ],
      () => screens[screen](state, act, this.notifications),
    );
    refill(
      parts.banner,
      [state.banner, act, screen],
      () =>
        state.banner &&
        screen !== "list" &&
        element(
          "ul",
          { className: "plain", "aria-label": "Banner" },
          notification(state.banner, act && { tap: act.tap }),
        ),
    );
    refill(parts.card, [state.card], () => state.card && opened(state.card));
    const alerts = isInFront(state) ? state.alerts : none; // they are in the application's own windows
    refill(parts.alerts, [alerts, act], () =>
      alerts.slice(-mostAlerts).map((one, i, { length }) => alert(one, length - 1 - i, act)),
    );
    refill(parts.prompt, [state.prompt, act], () => state.prompt && prompt(act));
    refill(parts.home, [screen, act], () => this.#homeBar(screen, act));
    this.#stack(hadFocus);
  }

  /** What is below an alert or the prompt can't be reached, and the focus goes up with them. */
  #stack(hadFocus) {
    const { prompt: top, alerts, card, ...below } = this.parts;
    const asks = top.hasChildNodes() ? top : alerts.hasChildNodes() ? alerts : null;
    for (const part of Object.values(below)) part.inert = asks !== null;
    alerts.inert = card.inert = asks === top;
    if (hadFocus && asks && !asks.contains(document.activeElement)) {
      asks.querySelector("button:enabled")?.focus({ preventScroll: true });
    } else if (hadFocus && document.activeElement === document.body) this.body.focus({ preventScroll: true });
  }

  /** Whether something happened after which a screen that somebody chose suits no more. */
  #isElsewhere({ list: shownList, running, application: { state } }) {
    const last = this.#state;
    return last && (last.list !== shownList || last.running !== running || last.application.state !== state);
  }

  #screen() {
    if (this.#sheet) return this.#sheet;
    if (isInFront(this.#state)) return "application";
    return hasNews(this.#state) ? "list" : "home";
  }

  #show(sheet) {
    this.#sheet = sheet;
    this.draw(this.#state, this.#isNow);
  }

  #status(state) {
    const count = state.list.length;
    const isListed = this.#screen() === "list";
    const words = `${count} notification${count === 1 ? "" : "s"}`;
    return [
      element("span", { className: "clock" }, timeOf(state.clock)),
      state.vibrated && element("span", { className: "buzz", role: "status" }, "vibrates"),
      element(
        "span",
        { className: "signs" },
        count > 0 &&
          button(String(count), () => this.#show(isListed ? null : "list"), {
            className: "pull",
            "aria-label": isListed ? `Put the ${words} away` : `Show the ${words}`,
            title: words,
          }),
        element(
          "span",
          {
            className: state.airplane ? "plane" : "bars",
            role: "img",
            "aria-label": state.airplane ? "airplane mode" : "connected",
          },
          state.airplane ? "✈" : bars(),
        ),
        element("span", { className: "battery", "aria-hidden": "true" }),
      ),
    ];
  }

  #homeBar(screen, act) {
    const press = () => {
      if (screen === "application") act.home();
      else this.#show(isInFront(this.#state) ? null : "home");
    };
    const label = screen === "list" ? "Put the notifications away" : "To the home screen";
    return button("", press, {
      className: "home-bar",
      "aria-label": label,
      title: label,
      disabled: screen === "home" || (screen === "application" && !act),
    });
  }
}
