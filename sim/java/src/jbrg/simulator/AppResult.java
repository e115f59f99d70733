package jbrg.simulator;

/**
 * One answer an application gave to a request of the device's application management.
 *
 * @param request "run_app", "terminate_app", "open_window" or "close_window"
 * @param appId   the application the request was for
 * @param code    the result code it answered
 */
public record AppResult(String request, String appId, int code) {
}
