// What a person does to a phone, as the lines that say it. A line is an object, or its text already.

import { parse, written } from "../state/json.js";

const settle = { do: "settle" };
const state = (name) => ({ do: "application", state: name });

/** The host's own code, which it runs whenever it is launched. */
function launched({ code }) {
  const { activate, ...configuration } = code;
  const steps = [];
  if (Object.keys(configuration).length > 0) steps.push({ do: "host", ...configuration });
  if (activate !== undefined) steps.push({ do: "activate", value: activate });
  return steps;
}

export const relaunch = (phone) => [{ do: "relaunch" }, ...launched(phone), settle];

/** The application, brought to the front; launched when it has ended. */
export const toFront = (phone) =>
  phone.running ? [state("active"), settle] : [state("active"), ...relaunch(phone)];

export const toBackground = () => [state("inactive"), state("background"), settle];
export const beInactive = () => [state("inactive"), settle];
export const endApplication = () => [{ phone: "end" }];
export const airplaneMode = (on) => () => [{ phone: "airplaneMode", on }];
export const advance = (seconds) => () => [{ do: "advance", seconds }];
export const tapOK = (alert) => () => [{ do: "tapOK", alert }, settle];
export const takeOff = (notification) => () => [{ phone: "remove", notification }];
export const answerPrompt = (granted) => () => [{ do: "authorization", granted, error: null }, settle];

/** The host configures the library and switches notifications on, as it would at its first launch. */
export const register = (phone) => [
  { do: "host", appHash: phone.host.appHash ?? "f00d", foreground: phone.host.foreground },
  { do: "activate", value: true },
  settle,
];

/** A notification, tapped where the system shows it. */
export const tap =
  ({ notification }) =>
  () => [{ phone: "tap", notification }];

const forSimulator = "Simulator Target Bundle"; // in a file for it, and carried by no service

/** A payload's text as a service carries it. */
function carried(payload) {
  const { [forSimulator]: bundle, ...rest } = parse(payload);
  return bundle === undefined ? payload : written(rest);
}

/** A remote notification comes to the phone. `payload` is its JSON text, which goes as it is. */
export const arrives = (payload) => () => [`{"phone":"arrive","userInfo":${carried(payload)}}`];

/** The system has a new token, and hands it over while the application runs. */
export const newToken = (token) => (phone) => [
  { do: "device", token },
  ...(phone.running ? [{ do: "deliverToken", hex: token }, settle] : []),
];
