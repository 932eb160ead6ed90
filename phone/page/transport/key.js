// The key that the server wants to see. It comes in the address that the program prints.

const storedAs = "key";

/**
 * The key, out of sight once it is read from the address; a reload finds it again, and so does a new address.
 */
export function takeKey() {
  addEventListener("hashchange", () => location.reload());
  const given = location.hash.slice(1);
  if (given) {
    sessionStorage.setItem(storedAs, given);
    history.replaceState(null, "", location.pathname);
  }
  return given || sessionStorage.getItem(storedAs) || "";
}
