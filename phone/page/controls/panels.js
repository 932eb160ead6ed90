// What can be done to the phone, a panel for each kind of it.

import { ApplePanel } from "./apple_panel.js";
import { DevicePanel } from "./device_panel.js";
import { HostPanel } from "./host_panel.js";
import { ServerPanel } from "./server_panel.js";
import { StepPanel } from "./step_panel.js";
import { tabs } from "./tabs.js";

export class Panels {
  #parts;
  #informed;

  /** `steps` is the table of steps. */
  constructor(root, steps, editor, transport, actions, message) {
    const row = (name) => steps.find((step) => step.name === name);
    const host = new HostPanel(row("host"), actions, message);
    const device = new DevicePanel(row("device"), actions, message);
    const server = new ServerPanel(row("server"), actions);
    const apple = new ApplePanel(transport, actions);
    const anyStep = new StepPanel(steps, actions, message);
    this.#parts = [editor, host, device, server];
    this.#informed = [editor, apple];
    const panels = [
      ["panel-notification", "Notification", editor.panel],
      ["panel-host", "Your code", host.content],
      ["panel-device", "The phone", device.content],
      ["panel-server", "Servers", [...server.content, ...apple.content]],
      ["panel-step", "Any step", anyStep.content],
    ];
    tabs(root, "What can be done", panels, (id) => id === "panel-notification" && editor.refresh());
  }

  /** Shows what the program tells of itself. */
  showStatus(status) {
    for (const part of this.#informed) part.showStatus(status);
  }

  /** Shows the phone as it is now. */
  update(state) {
    for (const part of this.#parts) part.update(state);
  }
}
