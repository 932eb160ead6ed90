/** What was done to the phone or happened on it: an object with "do", "phone", "event" or "screen". */
export type Line = Record<string, any>;

/** A notification of the phone's list: its number, or the line that showed it. */
export type Notification = number | Line;

export interface PhoneOptions {
  /** Whether a stand-in for Apple's push service runs in front of the phone, at any free port or this one. */
  apns?: boolean | number;
  /** The application's bundle identifier. */
  topic?: string;
  /** The file with the key that signs provider tokens; any key when left out. */
  providerKey?: string;
  /** The file with the authority of clients' certificates. */
  clientAuthority?: string;
  /** An error in an accepted payload makes the tool's exit status 1. */
  strict?: boolean;
  /** HOST:PORT of a push server that runs elsewhere on this machine, with the file of its `authority`. */
  server?: string;
  authority?: string;
  /** The file that keeps the phone's settings. */
  settings?: string;
  /** A file to play first. */
  scenario?: string;
  build?: 'device' | 'simulator';
  /** Further arguments of the command `quorvantis-push phone`. */
  arguments?: string[];
  /** The program; otherwise the variable QUORVANTIS_PUSH, or quorvantis-push from PATH. */
  tool?: string;
}

/** Where a backend finds the stand-in for Apple's push service. */
export interface Apns {
  readonly host: string;
  readonly port: number;
  /** The application's bundle identifier. */
  readonly topic: string;
  /** The file with the certificate of the authority that the backend's client must trust. */
  readonly authority: string;
  /** The same certificate, as PEM. */
  readonly ca: string;
}

/** How the application configures the library, and how the user answers. */
export interface Registration {
  appHash?: string;
  granted?: boolean;
  foreground?: boolean;
  deactivateGPS?: boolean;
  delegate?: string[] | null;
}

/**
 * A phone with the library and an application on it, in a process of its own, which ends with `stop()` or with this one.
 * Operations give the lines that they led to, and reject with Refused when the phone's state does not allow them (409).
 */
export class Phone {
  private constructor();

  /** Rejects with PhoneError, whose message holds what the tool said, when it does not start. */
  static start(options?: PhoneOptions): Promise<Phone>;

  /** Ends the phone, and gives the tool's exit status: with `strict`, 1 after an accepted payload with an error. */
  stop(): Promise<number | string>;
  [Symbol.asyncDispose](): Promise<void>;

  /** The stand-in for Apple's push service; undefined without the option `apns`. */
  readonly apns: Apns | undefined;
  /** Where the phone's interface is, with its key. */
  readonly address: string;
  /** The device token in hexadecimal digits; null when the system has none for the application. */
  token(): Promise<string | null>;

  /** Plays steps and acts. Rejects with Refused, status 400, when one can't be read; none was played then. */
  play(...lines: Line[]): Promise<Line[]>;
  /** What a host does at its launch: it configures the library and switches notifications on; the user answers. */
  register(registration?: Registration): Promise<Line[]>;
  /** A remote notification reaches the phone, without a provider. */
  arrive(userInfo: Line, more?: Line): Promise<Line[]>;
  /** The user taps a notification of the list: launches an ended application, and lets the second pass that the library
   * takes to open a link. */
  tap(notification: Notification, action?: string): Promise<Line[]>;
  /** The user removes a notification from the list. */
  remove(notification: Notification): Promise<Line[]>;
  /** The application's state from now on. */
  goTo(state: 'active' | 'inactive' | 'background'): Promise<Line[]>;
  /** The user ends the application. */
  end(): Promise<Line[]>;
  /** The application starts again; its host has configured nothing yet. */
  relaunch(): Promise<Line[]>;
  /** Nothing arrives, and every request fails, until it is turned off. */
  airplaneMode(on?: boolean): Promise<Line[]>;
  /** The application is removed: a provider gets 410 for its device token. */
  uninstall(): Promise<Line[]>;
  /** The application is installed anew. */
  install(): Promise<Line[]>;
  /** Lets time pass on the phone's clock, which moves in no other way. */
  advance(seconds: number): Promise<Line[]>;
  /** What the stand-in for Apple's service does with the next requests, in place of what was set before. */
  failNext(...faults: Line[]): Promise<void>;
  /** A fresh phone takes the place of this one, and plays the scenario. Its lines count from 1 again. */
  fresh(scenario?: string): Promise<void>;

  /**
   * Waits for the next line that has all these members. Begins after the line that the last wait found, at first with the
   * phone's first line. A member that is an object names those inside it. Rejects with WaitFailed.
   */
  wait(members: Line, options?: { seconds?: number }): Promise<Line>;
  /** All lines since the phone was started afresh. */
  lines(): Promise<Line[]>;
  /** The same, as a person reads them. */
  transcript(): Promise<string>;
  /** What was done so far, as a scenario that `quorvantis-push run` plays. */
  scenario(): Promise<string>;
}

/** The tool could not be started or reached, or has ended; the message holds what it said. */
export class PhoneError extends Error {}

/** The phone has refused a request; `status` is the HTTP status. */
export class Refused extends PhoneError {
  readonly status: number;
}

/** No such line came in time; the message shows those that came instead. */
export class WaitFailed extends Error {}
