// Panels of which one is shown, as the tab pattern has it: arrow keys go from tab to tab.

import { button, element } from "../views/element.js";

/**
 * Fills `root` with a tab for each of `panels`: [id, label, elements]. `shown(id)` hears which one is open.
 */
export function tabs(root, label, panels, shown = () => {}) {
  const heads = panels.map(([id, name]) =>
    button(name, () => open(id), { id: `tab-${id}`, role: "tab", "aria-controls": id }),
  );
  const bodies = panels.map(([id, , content]) =>
    element("div", { id, role: "tabpanel", className: "panel", "aria-labelledby": `tab-${id}` }, content),
  );
  const list = element("div", { role: "tablist", "aria-label": label, keydown: key }, heads);

  function open(id) {
    heads.forEach((head, i) => {
      const isOpen = panels[i][0] === id;
      head.setAttribute("aria-selected", String(isOpen));
      head.tabIndex = isOpen ? 0 : -1;
      bodies[i].hidden = !isOpen;
    });
    shown(id);
  }

  function key(event) {
    const at = heads.indexOf(document.activeElement);
    const to = { ArrowRight: at + 1, ArrowLeft: at - 1, Home: 0, End: heads.length - 1 }[event.key];
    if (to === undefined) return;
    event.preventDefault();
    const next = (to + heads.length) % heads.length;
    open(panels[next][0]);
    heads[next].focus();
  }

  root.append(list, ...bodies);
  open(panels[0][0]);
}
