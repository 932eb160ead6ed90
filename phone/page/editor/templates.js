// Payloads to start from.

const offer = { title: "Spring offers", body: "Three new ones are waiting for you" };

const library = {
  "A plain notification": { aps: { alert: offer, badge: 3, sound: "default", type: "pushlib-normal" } },
  "One that opens the application": { aps: { alert: offer, badge: 0, type: "pushlib-abrirapp" } },
  "One that opens a link": {
    aps: { alert: offer, type: "pushlib-abrirurl", urlnoti: "https://www.example.com/offers" },
  },
  "One that stores values": {
    aps: {
      alert: { title: "Your code", body: "SPRING" },
      type: "pushlib-extras",
      extra1: "SPRING",
      extra2: 20,
      "content-available": 1,
    },
  },
  "Without a type, with values in the report": {
    aps: { alert: { title: "Your order", body: "It is on its way" }, extra1: "order-77" },
  },
  "A silent one": { aps: { "content-available": 1, extra1: "refresh" } },
};

const apple = {
  "Subtitle and sound": {
    aps: {
      alert: { title: "Game request", subtitle: "Five card draw", body: "Bob wants to play poker" },
      sound: "default",
    },
  },
  "Only the badge": { aps: { badge: 5 } },
  "Texts in the user’s language": {
    aps: {
      alert: {
        "title-loc-key": "GAME_REQUEST",
        "loc-key": "GAME_INVITATION",
        "loc-args": ["Jenna", "Frank"],
      },
    },
  },
  "With buttons (a category)": {
    aps: { alert: { title: "Meeting", body: "At ten, in the small room" }, category: "MEETING_INVITATION" },
    meeting: 123456789,
  },
  "To be changed by an extension": {
    aps: { alert: { title: "A new photo", body: "From Ana" }, "mutable-content": 1 },
    picture: "https://www.example.com/photo.jpg",
  },
  "Time-sensitive, in a group": {
    aps: {
      alert: { title: "Your taxi", body: "It is at the door" },
      "thread-id": "taxi",
      "interruption-level": "time-sensitive",
      "relevance-score": 0.8,
    },
  },
  "A critical sound": {
    aps: {
      alert: { title: "Smoke", body: "In the kitchen" },
      "interruption-level": "critical",
      sound: { name: "alarm.caf", critical: 1, volume: 0.8 },
    },
  },
  "For the simulator (.apns)": {
    "Simulator Target Bundle": "com.example.app",
    aps: { alert: { title: "Hello", body: "From a file" } },
  },
};

const mistakes = {
  "The alert is a text": { aps: { alert: "Three new offers", type: "pushlib-normal" } },
  "The badge is a text": { aps: { alert: offer, badge: "3", type: "pushlib-normal" } },
  "A misspelt type": {
    aps: { alert: offer, type: "pushlib-abrirUrl", urlnoti: "https://www.example.com/offers" },
  },
  "A link that needs encoding": {
    aps: { alert: offer, type: "pushlib-abrirurl", urlnoti: "https://www.example.com/spring offers" },
  },
};

/** [group, {name: payload}] */
export const templates = [
  ["What the library handles", library],
  ["What Apple documents", apple],
  ["Mistakes", mistakes],
];
