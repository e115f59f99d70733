package orvane.box.attribute;

/** Whether a document is deleted once a job has printed or sent it. */
public enum DeleteSetting {
    OFF, ON
}
