"""A click on the page, measured by the page itself: a script for execute_async_script, which takes the element's id and
gives the milliseconds until what came of it is drawn."""

GESTURE = """
performance.clearMeasures("gesture");
const [id, done] = arguments;
const look = () => { const [one] = performance.getEntriesByName("gesture");
                     if (one) done(one.duration); else requestAnimationFrame(look); };
document.getElementById(id).click();
look();
"""
